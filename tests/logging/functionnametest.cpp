#include "logging/functionname.h"

#include <QTest>

#include <functional>
#include <random>
#include <vector>

// What the compiler at hand says, with the name that a function should get of it.
#define SAYS(p_name)                                                                               \
    do {                                                                                           \
        said().emplace_back(Q_FUNC_INFO, p_name);                                                  \
    } while (false)

namespace
{
std::vector<std::pair<QByteArray, QByteArray>>& said()
{
    static std::vector<std::pair<QByteArray, QByteArray>> s_said;
    return s_said;
}
} // namespace

namespace zoo
{
template <class T> class Cage
{
public:
    Cage() { SAYS("zoo::Cage::Cage"); }
    explicit Cage(const std::vector<std::vector<T>>& /*p_all*/) { SAYS("zoo::Cage::Cage"); }
    virtual ~Cage() { SAYS("zoo::Cage::~Cage"); }
    Q_DISABLE_COPY(Cage)

    virtual const T* open(int /*p_key*/) const noexcept
    {
        SAYS("zoo::Cage::open");
        return nullptr;
    }
    template <class U> static std::vector<U> feed(const U& /*p_food*/, T (*p_how)(int))
    {
        SAYS("zoo::Cage::feed");
        [](U, T (*)(int)) { SAYS("zoo::Cage::feed::<lambda>"); }(U(), p_how);
        return {};
    }
    class Door
    {
    public:
        void slam() { SAYS("zoo::Cage::Door::slam"); }
    };
    bool operator<(const Cage& /*p_other*/) const
    {
        SAYS("zoo::Cage::operator<");
        [](int) { SAYS("zoo::Cage::operator<::<lambda>"); }(1);
        return false;
    }
    decltype(auto) constant() const&
    {
        SAYS("zoo::Cage::constant");
        [] { SAYS("zoo::Cage::constant::<lambda>"); }();
        return 1;
    }
    bool operator>(const Cage& /*p_other*/) const
    {
        SAYS("zoo::Cage::operator>");
        [] { SAYS("zoo::Cage::operator>::<lambda>"); }();
        return false;
    }
    Cage& operator<<(int /*p_value*/)
    {
        SAYS("zoo::Cage::operator<<");
        return *this;
    }
    Cage* operator->()
    {
        SAYS("zoo::Cage::operator->");
        return this;
    }
    T operator()(int /*p_value*/) const
    {
        SAYS("zoo::Cage::operator()");
        return T();
    }
    T operator[](int /*p_value*/)
    {
        SAYS("zoo::Cage::operator[]");
        return T();
    }
    Cage& operator&()
    {
        SAYS("zoo::Cage::operator&");
        return *this;
    }
    bool operator&&(int /*p_value*/)
    {
        SAYS("zoo::Cage::operator&&");
        return false;
    }
    explicit operator bool() const
    {
        SAYS("zoo::Cage::operator bool");
        [] { SAYS("zoo::Cage::operator bool::<lambda>"); }();
        return true;
    }
    explicit operator std::vector<T>() const
    {
        SAYS("zoo::Cage::operator std::vector");
        return {};
    }
    explicit operator const char*() const
    {
        SAYS("zoo::Cage::operator const char*");
        return nullptr;
    }
    void* operator new[](std::size_t p_size)
    {
        SAYS("zoo::Cage::operator new[]");
        return ::operator new[](p_size);
    }
    void operator delete[](void* p_memory)
    {
        SAYS("zoo::Cage::operator delete[]");
        ::operator delete[](p_memory);
    }
    void* operator new(std::size_t p_size)
    {
        SAYS("zoo::Cage::operator new");
        return ::operator new(p_size);
    }
    void operator delete(void* p_memory)
    {
        SAYS("zoo::Cage::operator delete");
        ::operator delete(p_memory);
    }
};

template <class T> T operator+(const Cage<T>& /*p_a*/, int /*p_b*/)
{
    SAYS("zoo::operator+");
    return T();
}
long double operator"" _bananas(long double p_number)
{
    SAYS("zoo::operator\"\"_bananas");
    return p_number;
}
int keeper(double /*p_value*/)
{
    SAYS("zoo::keeper");
    return 1;
}
using Keeper = int (*)(double);
Keeper keeperOf(int /*p_day*/)
{
    SAYS("zoo::keeperOf");
    return keeper;
}
int (&weights(std::function<void(int (*)(int))> /*p_how*/))[3]
{
    SAYS("zoo::weights");
    static int s_weights[3];
    return s_weights;
}
} // namespace zoo

namespace
{
int digit(int p_value)
{
    SAYS("{anonymous}::digit");
    return p_value;
}
struct Plain {
    static void run(int (*p_argv)[2], char* /*p_text*/, ...)
    {
        SAYS("{anonymous}::Plain::run");
        Q_UNUSED(p_argv)
        struct Local {
            void go() const
            {
                SAYS("{anonymous}::Plain::run::Local::go");
                auto lambda = [](const std::vector<int>&, auto) mutable {
                    SAYS("{anonymous}::Plain::run::Local::go::<lambda>");
                };
                lambda({}, 2);
            }
        };
        Local().go();
    }
};
auto deduced() -> std::vector<int>
{
    SAYS("{anonymous}::deduced");
    return {};
}
} // namespace

/** Names of functions as the log shows them. */
class FunctionNameTest : public QObject
{
    Q_OBJECT

private slots:
    void signaturesOfThisCompilerAreShortened()
    {
#ifndef __GNUC__
        QSKIP("its lambdas and namespaces have other names");
#endif
        SAYS("FunctionNameTest::signaturesOfThisCompilerAreShortened");
        [this] {
            Q_UNUSED(this)
            SAYS("FunctionNameTest::signaturesOfThisCompilerAreShortened::<lambda>");
        }();
        {
            zoo::Cage<std::vector<int>> cage;
            using Pair = std::pair<int, std::vector<char>>;
            const zoo::Cage<Pair> nested(std::vector<std::vector<Pair>>{});
            cage.open(1);
            cage.feed<QString>({}, nullptr);
            zoo::Cage<int>::Door().slam();
            static_cast<void>(cage < cage);
            static_cast<void>(cage > cage);
            cage << 3;
            cage->open(1);
            cage(2);
            cage[2];
            static_cast<void>(&cage);
            static_cast<void>(cage && 2);
            static_cast<void>(static_cast<bool>(cage));
            static_cast<void>(static_cast<std::vector<std::vector<int>>>(cage));
            static_cast<void>(static_cast<const char*>(cage));
            static_cast<void>(cage + 1);
            delete[] new zoo::Cage<int>[ 2 ];
            delete new zoo::Cage<int>;
        }
        using zoo::operator"" _bananas;
        static_cast<void>(1.5_bananas);
        zoo::keeperOf(1)(2.0);
        zoo::weights({});
        digit(1);
        Plain::run(nullptr, nullptr);
        deduced();

        QVERIFY(said().size() > 35);
        for (const auto& [signature, name] : said()) {
            QByteArray expected = name;
#ifdef __clang__
            expected.replace("{anonymous}", "(anonymous namespace)");
            expected.replace("operator std::vector", "operator vector");
            expected.replace("const char*", "const char *");
#endif
            QVERIFY2(shortFunctionName(signature) == QString::fromUtf8(expected),
                     signature + " gave " + shortFunctionName(signature).toUtf8());
        }
    }

    void signaturesOfAnyCompilerAreShortened_data()
    {
        QTest::addColumn<QByteArray>("signature");
        QTest::addColumn<QString>("name");
        const auto row = [](const char* p_signature, const char* p_name) {
            QTest::newRow(p_signature) << QByteArray(p_signature) << QString::fromUtf8(p_name);
        };
        row("main", "main");
        row("int main(int, char**)", "main");
        row("void MainWindow::OnSaveFile()", "MainWindow::OnSaveFile");
        row("QList<QMap<int, QString> > Tree<A, B<C> >::all(QMap<int, C>) const [with A = int; B = Box "
            "[3]]",
            "Tree::all");
        row("main()::<lambda(int)>", "main::<lambda>");
        row("main(int, char**)::<lambda(auto:1, QMap<int, int>)> mutable [with auto:1 = int]",
            "main::<lambda>");
        row("static constexpr auto main()::<lambda(int)>::_FUN(int)", "main::<lambda>::_FUN");
        row("Tree::grow(int) const::<lambda()>", "Tree::grow::<lambda>");
        row("Tree::grow(int)::<lambda()>::<lambda(char)>", "Tree::grow::<lambda>::<lambda>");
        row("void (* Tree::handler(int))(double)", "Tree::handler");
        row("void (Leaf::* Tree::member(int) const)(double)", "Tree::member");
        row("int (& numbers(int))[3]", "numbers");
        row("void f(void (*)(int), int (Tree::*)(char) const)", "f");
        row("void f(Tree::*)", "f");
        row("{anonymous}::Tree& {anonymous}::Tree::operator=({anonymous}::Tree&&)",
            "{anonymous}::Tree::operator=");
        row("<unnamed struct>::<constructor>", "<unnamed struct>::<constructor>");
        row("std::string name[abi:cxx11](int)", "name");
        row("void f() const & noexcept(true)", "f");
        row("Tree::grow(int) const &::<lambda()>", "Tree::grow::<lambda>");
        row("Tree::grow(int) &&::<lambda(int)> mutable", "Tree::grow::<lambda>");
        row("Tree::grow(int) const volatile && noexcept(true)::<lambda()>", "Tree::grow::<lambda>");
        row("Tree::constant() const &::<lambda()>::<lambda()>",
            "Tree::constant::<lambda>::<lambda>");
        row("decltype(auto) Tree::grow(T) const & [with T = int]", "Tree::grow");
        row("decltype(auto) Tree::grow()::<lambda()>", "Tree::grow::<lambda>");
        row("decltype(auto) constant()", "constant");
        row("decltype(auto) finalStep()::<lambda()>", "finalStep::<lambda>");
        row("decltype(auto) &Tree::self() const &::<lambda()>", "Tree::self::<lambda>");
        row("decltype(auto) Tree::operator()(int) const &::<lambda()>",
            "Tree::operator()::<lambda>");
        row("std::strong_ordering Tree::operator<=>(const Tree&) const", "Tree::operator<=>");
        row("bool operator()(int, int)", "operator()");
        row("bool Tree::operators(int)", "Tree::operators");
        row("int operator_count()", "operator_count");
        row("bool Tree::isoperator(int)", "Tree::isoperator");
        row("Tree::operator QList<int>*() const", "Tree::operator QList*");
        row("decltype (a > b) f(int)", "f");
        // Another compiler.
        row("int *Tree::find(int) const", "Tree::find");
        row("const Tree &(anonymous namespace)::Tree::self(int) [T = int]",
            "(anonymous namespace)::Tree::self");
        row("auto main()::(anonymous class)::operator()(int) const", "main::<lambda>");
        row("bool operator<<(Tree &, const T &) [T = Tree]", "operator<<");
        // And a third.
        row("int __cdecl main(int,char *[])", "main");
        row("void __thiscall Tree<class QMap<int,struct Leaf *> >::grow(int) const", "Tree::grow");
        row("class QString __cdecl Tree<int>::name<char,bool>(void) noexcept const", "Tree::name");
        row("auto __cdecl main::<lambda_0a1b2c3d>::operator ()(int) const", "main::<lambda>");
        row("bool __cdecl Tree::operator <(const class Tree &) const", "Tree::operator<");
        row("class std::ostream &__cdecl operator <<<class Tree>(class std::ostream &,const Tree &)",
            "operator<<");
        row("bool __cdecl operator <<int>(const Tree<int> &,const Tree<int> &)", "operator<");
        row("bool __cdecl operator ><int>(const Tree<int> &,const Tree<int> &)", "operator>");
        row("class Tree *__cdecl Tree::operator ->(void)", "Tree::operator->");
        row("__cdecl Tree::operator bool(void) const", "Tree::operator bool");
        row("void *__cdecl Tree::operator new[](unsigned __int64)", "Tree::operator new[]");
        row("void __cdecl Tree::operator delete(void *)", "Tree::operator delete");
        row("__cdecl Tree<int>::~Tree(void)", "Tree::~Tree");
        row("void __cdecl `anonymous-namespace'::Tree::grow(int)",
            "`anonymous-namespace'::Tree::grow");
        row("void (__cdecl *__cdecl Tree::handler(int))(double)", "Tree::handler");
        row("public: virtual void __stdcall Tree::grow(int)", "Tree::grow");
    }

    void signaturesOfAnyCompilerAreShortened()
    {
        QFETCH(QByteArray, signature);
        QFETCH(QString, name);
        QCOMPARE(shortFunctionName(signature.constData()), name);
    }

    void nonsenseDoesNoHarm()
    {
        QCOMPARE(shortFunctionName(nullptr), QString());
        QCOMPARE(shortFunctionName(""), QString());
        QCOMPARE(shortFunctionName(" "), QString());
        // Every text of the words and signs that a signature is made of has some name, and an end.
        const QByteArrayList pieces{
            "a",       "Tree",     "void",    "int",     "::",       "operator",
            "const",   "noexcept", "new",     "delete",  "<lambda(", "(anonymous class)",
            "mutable", "[with ",   "~",       "__cdecl", "Tree::*",  "`anonymous-namespace'",
            "<",       ">",        "(",       ")",       "[",        "]",
            "{",       "}",        "`",       "'",       "*",        "&",
            "&&",      "<<",       "->",      "<=>",     "()",       "[]",
            ",",       "=",        "\"\" _x", "树",      " ",        " "};
        std::mt19937 chance(20261121);
        const auto upTo = [&](int p_most) {
            return std::uniform_int_distribution<int>(0, p_most)(chance);
        };
        for (int i = 0; i < 20000; ++i) {
            QByteArray text;
            for (int rest = upTo(i % 10 == 0 ? 200 : 12); rest >= 0; --rest) {
                text += pieces.at(upTo(pieces.size() - 1));
            }
            const QString name = shortFunctionName(text);
            QVERIFY2(name.isEmpty() == text.trimmed().isEmpty(), text);
            // Nothing but the word for a lambda, and a blank behind "operator", is longer in the
            // name.
            const int longer = text.count("<lambda") + text.count("operator");
            QVERIFY2(name.size() <= text.size() + longer, text);
        }
    }
};

QTEST_APPLESS_MAIN(FunctionNameTest)
#include "functionnametest.moc"
