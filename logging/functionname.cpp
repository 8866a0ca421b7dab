#include "logging/functionname.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>

namespace
{
using View = std::string_view;
constexpr std::size_t s_none = View::npos;

// Longer signs stand in front of those they begin with.
constexpr std::array<View, 48> s_operators{
    "co_await", "delete[]", "delete", "new[]", "new",    "<=>",       "->*", "<<=", ">>=", "()",
    "[]",       "->",       "++",     "--",    "<<",     ">>",        "<=",  ">=",  "==",  "!=",
    "&&",       "||",       "+=",     "-=",    "*=",     "/=",        "%=",  "^=",  "&=",  "|=",
    "+",        "-",        "*",      "/",     "%",      "^",         "&",   "|",   "~",   "!",
    "=",        "<",        ">",      ",",     "new []", "delete []", "( )", "[ ]"};
// What may stand behind the arguments.
constexpr std::array<View, 9> s_qualifiers{"const", "volatile", "noexcept", "mutable", "override",
                                           "final", "throw",    "&&",       "&"};
constexpr std::array<View, 5> s_callingConventions{"__cdecl", "__stdcall", "__thiscall",
                                                   "__fastcall", "__vectorcall"};
constexpr View s_operator = "operator";
constexpr View s_lambda = "<lambda>";

bool isNameCharacter(char p_character)
{
    return std::isalnum(static_cast<unsigned char>(p_character)) != 0 || p_character == '_' ||
           p_character == '$' || static_cast<unsigned char>(p_character) >= 0x80;
}
bool startsWith(View p_text, View p_start) { return p_text.substr(0, p_start.size()) == p_start; }
bool endsWith(View p_text, View p_end)
{
    return p_text.size() >= p_end.size() && p_text.substr(p_text.size() - p_end.size()) == p_end;
}
bool endsWithWord(View p_text, View p_word)
{
    return endsWith(p_text, p_word) &&
           (p_text.size() == p_word.size() || !isNameCharacter(p_word.front()) ||
            !isNameCharacter(p_text[p_text.size() - p_word.size() - 1]));
}
View withoutBlanksInFront(View p_text)
{
    const std::size_t first = p_text.find_first_not_of(' ');
    return first == s_none ? View() : p_text.substr(first);
}
View trimmed(View p_text)
{
    const std::size_t last = p_text.find_last_not_of(' ');
    return last == s_none ? View() : withoutBlanksInFront(p_text.substr(0, last + 1));
}

/**
 * Where the bracket at a place has its counterpart, behind it (p_step 1) or before it (-1). Angle
 * brackets and quotes that stand alone, as in an operator's sign, count for nothing.
 */
std::size_t counterpart(View p_text, std::size_t p_at, int p_step)
{
    constexpr View openings = "([{<`";
    constexpr View closings = ")]}>'";
    const View mine = p_step > 0 ? openings : closings;
    const View others = p_step > 0 ? closings : openings;
    std::string awaited;
    for (std::size_t at = p_at; at < p_text.size(); at += static_cast<std::size_t>(p_step)) {
        const std::size_t other = others.find(p_text[at]);
        if (other != s_none) {
            const std::size_t found = awaited.rfind(p_text[at]);
            // A round bracket closes whatever loose sign stands within; the reverse doesn't hold.
            if (found != s_none && (found + 1 == awaited.size() || other < 3)) {
                awaited.erase(found);
            }
            if (awaited.empty()) {
                return at;
            }
        } else if (const std::size_t kind = mine.find(p_text[at]); kind != s_none) {
            awaited.push_back(others[kind]);
        }
    }
    return s_none;
}

/** Without what a compiler says about template parameters: " [with T = int]". */
View withoutTemplateParameters(View p_text)
{
    if (!endsWith(p_text, "]")) {
        return p_text;
    }
    const std::size_t open = counterpart(p_text, p_text.size() - 1, -1);
    const bool apart = open != s_none && open > 0 && p_text[open - 1] == ' ';
    return apart ? trimmed(p_text.substr(0, open)) : p_text;
}

/** Without "const noexcept" and the like, if there are arguments in front of it. */
View withoutQualifiers(View p_text)
{
    View text = trimmed(p_text);
    for (bool found = true; found;) {
        found = false;
        View before = text;
        if (endsWith(text, ")")) {
            const std::size_t open = counterpart(text, text.size() - 1, -1);
            before = trimmed(text.substr(0, open == s_none ? 0 : open));
            if (!endsWithWord(before, "noexcept") && !endsWithWord(before, "throw")) {
                return text;
            }
        }
        for (const View qualifier : s_qualifiers) {
            if (endsWithWord(before, qualifier)) {
                text = trimmed(before.substr(0, before.size() - qualifier.size()));
                // A lambda has its arguments within its angle brackets.
                if (qualifier == "mutable" && endsWith(text, ">")) {
                    return text;
                }
                found = true;
                break;
            }
        }
    }
    return p_text;
}

/** What a pointer or reference in brackets points to: "f(int)" of "*f(int)"; nothing without one.
 */
View pointedTo(View p_text)
{
    View text = trimmed(p_text);
    for (const View convention : s_callingConventions) {
        if (startsWith(text, convention)) {
            text = withoutBlanksInFront(text.substr(convention.size()));
        }
    }
    const std::size_t sign = text.find_first_of("*& (<,");
    if (sign == s_none || (text[sign] != '*' && text[sign] != '&') ||
        (sign > 0 && !endsWith(text.substr(0, sign), "::"))) {
        return {};
    }
    return withoutBlanksInFront(text.substr(sign + 1));
}

/** The declaration up to the end of the function's name. */
View upToName(View p_signature)
{
    View text = withoutTemplateParameters(trimmed(p_signature));
    for (;;) {
        text = withoutQualifiers(text);
        if (!endsWith(text, ")") && !endsWith(text, "]")) {
            return text;
        }
        const std::size_t open = counterpart(text, text.size() - 1, -1);
        if (open == s_none) {
            return text;
        }
        const View before = trimmed(text.substr(0, open));
        const View inside = text.substr(open + 1, text.size() - open - 2);
        // These brackets are the operator's own sign.
        if (trimmed(inside).empty() &&
            (endsWithWord(before, s_operator) ||
             (text.back() == ']' &&
              (endsWithWord(before, "operator new") || endsWithWord(before, "operator delete"))))) {
            return text;
        }
        // A function that returns a pointer to a function stands within that one's brackets.
        const View inner = text.back() == ')' ? pointedTo(inside) : View();
        if (inner.empty() && before.empty()) {
            return text;
        }
        text = inner.empty() ? before : inner;
    }
}

/** Where the word "operator" stands for the first time. */
std::size_t operatorPlace(View p_text)
{
    for (std::size_t at = p_text.find(s_operator); at != s_none;
         at = p_text.find(s_operator, at + 1)) {
        const std::size_t behind = at + s_operator.size();
        if ((at == 0 || !isNameCharacter(p_text[at - 1])) &&
            (behind == p_text.size() || !isNameCharacter(p_text[behind]))) {
            return at;
        }
    }
    return s_none;
}

/** The qualifier that a text begins with, with its argument; empty where it begins otherwise. */
View qualifierAt(View p_text)
{
    for (const View qualifier : s_qualifiers) {
        const View behind = p_text.substr(std::min(qualifier.size(), p_text.size()));
        if (!startsWith(p_text, qualifier) ||
            (isNameCharacter(qualifier.front()) && !behind.empty() &&
             isNameCharacter(behind.front()))) {
            continue;
        }
        const std::size_t close = startsWith(behind, "(") ? counterpart(behind, 0, 1) : s_none;
        return p_text.substr(0, qualifier.size() + (close == s_none ? 0 : close + 1));
    }
    return {};
}

/** Whether a text goes on with the qualifiers of a function that something stands in. */
bool goesOnWithQualifiers(View p_text)
{
    View text = withoutBlanksInFront(p_text);
    bool found = false;
    for (View next = qualifierAt(text); !next.empty(); next = qualifierAt(text)) {
        text = withoutBlanksInFront(text.substr(next.size()));
        found = true;
    }
    return found && startsWith(text, "::");
}

/** The qualified name at the end of a declaration, without return type. */
View qualifiedName(View p_declaration)
{
    std::size_t at = std::min(operatorPlace(p_declaration), p_declaration.size());
    while (at > 0) {
        const char character = p_declaration[at - 1];
        if (View(")]}>'").find(character) != s_none) {
            const std::size_t open = counterpart(p_declaration, at - 1, -1);
            at = open == s_none ? at - 1 : open;
            continue;
        }
        const auto inFunction = [&] {
            return endsWith(withoutQualifiers(p_declaration.substr(0, at)), ")") &&
                   goesOnWithQualifiers(p_declaration.substr(at));
        };
        if (character == ' ' && !inFunction()) {
            break;
        }
        --at;
    }
    const View name = p_declaration.substr(at);
    const std::size_t first = name.find_first_not_of("*&");
    return first == s_none ? name : name.substr(first);
}

/** The sign that an operator's text begins with; empty for a conversion. */
View operatorSign(View p_text)
{
    for (const View sign : s_operators) {
        if (!startsWith(p_text, sign)) {
            continue;
        }
        const View behind = withoutBlanksInFront(p_text.substr(sign.size()));
        const bool ends = behind.empty() || behind.front() == '(' || behind.front() == '<' ||
                          startsWith(behind, "::");
        if (ends) {
            return sign;
        }
    }
    return {};
}

/** Takes the parts of a qualified name one by one and keeps what names something. */
class NameReader
{
public:
    explicit NameReader(View p_name) : m_rest(p_name) {}

    std::string read()
    {
        while (!m_rest.empty()) {
            const char next = m_rest.front();
            if (operatorPlace(m_rest) == 0 && beginsPart()) {
                readOperator();
            } else if (View("([{<`").find(next) != s_none) {
                readBrackets();
            } else {
                if (next != ' ') {
                    m_name += next;
                }
                m_rest.remove_prefix(1);
            }
        }
        // Some compilers name the call of a lambda instead of the lambda.
        const std::string call = std::string(s_lambda) + "::operator()";
        if (endsWith(m_name, call)) {
            m_name.erase(m_name.size() - call.size() + s_lambda.size());
        }
        return m_name;
    }

private:
    bool beginsPart() const { return m_name.empty() || endsWith(m_name, "::"); }

    void readOperator()
    {
        m_rest = withoutBlanksInFront(m_rest.substr(s_operator.size()));
        m_name += s_operator;
        const View sign = operatorSign(m_rest);
        if (!sign.empty()) {
            if (isNameCharacter(sign.front())) {
                m_name += ' ';
            }
            for (const char each : sign) {
                if (each != ' ') {
                    m_name += each;
                }
            }
            m_rest.remove_prefix(sign.size());
        } else if (!startsWith(m_rest, "\"")) {
            // A conversion: the type up to the arguments, where they are still there.
            const View type = trimmed(m_rest.substr(0, m_rest.find_first_of("<(")));
            m_name += ' ';
            m_name += type;
            m_rest = withoutBlanksInFront(m_rest).substr(type.size());
        }
    }

    void readBrackets()
    {
        const bool named = beginsPart();
        const bool arguments = m_rest.front() == '(';
        const std::size_t close = counterpart(m_rest, 0, 1);
        const View group = m_rest.substr(0, close == s_none ? close : close + 1);
        m_rest.remove_prefix(group.size());
        if (named) {
            const bool lambda = startsWith(group, "<lambda") || group == "(anonymous class)";
            m_name += lambda ? s_lambda : group;
        } else if (arguments) {
            // The qualifiers of a function that something stands in.
            m_rest = m_rest.substr(std::min(m_rest.find("::"), m_rest.size()));
        }
    }

    View m_rest;
    std::string m_name;
};
} // namespace

QString shortFunctionName(const char* p_signature)
{
    if (!p_signature) {
        return QString();
    }
    const std::string name = NameReader(qualifiedName(upToName(p_signature))).read();
    return name.empty() ? QString::fromUtf8(p_signature).trimmed() : QString::fromStdString(name);
}
