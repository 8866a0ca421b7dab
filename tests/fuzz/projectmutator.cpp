#include "projectmutator.h"

#include "modules/catalogue/blocktables.h"
#include "project/checktag.h"
#include "project/projectdocument.h"
#include "project/projectreader.h"

#include <QDomDocument>
#include <QVector>

#include <iterator>
#include <random>

namespace
{
const QString s_module = QStringLiteral("module");
const QString s_value = QStringLiteral("value");

class Chance
{
public:
    explicit Chance(quint32 p_seed) : m_engine(p_seed) {}
    int below(int p_limit)
    {
        return static_cast<int>(m_engine() % static_cast<quint32>(qMax(1, p_limit)));
    }
    template <class List> auto oneOf(const List& p_list)
    {
        return *std::next(std::begin(p_list), below(static_cast<int>(std::size(p_list))));
    }

private:
    std::mt19937 m_engine;
};

QVector<QDomElement> modulesOf(const QDomDocument& p_document)
{
    QVector<QDomElement> modules;
    const QDomNodeList nodes = p_document.elementsByTagName(s_module);
    for (int i = 0; i < nodes.size(); ++i) {
        modules.append(nodes.at(i).toElement());
    }
    return modules;
}

QString someId(Chance& p_chance)
{
    static const int s_odd[] = {0, 301, 303, 306, 307, 401, 404, 433, 999, -1};
    if (p_chance.below(3) == 0) {
        return QString::number(p_chance.oneOf(s_odd));
    }
    return QString::number(p_chance.oneOf(blockRecords()).id);
}

void changeAttribute(QDomElement& p_element, Chance& p_chance)
{
    static const char* const s_names[] = {"x",    "y",        "ownid",   "moduleKey", "n",
                                          "port", "bInfread", "servoId", "angle",     "downname"};
    static const char* const s_values[] = {"0",
                                           "1",
                                           "-1",
                                           "5",
                                           "7",
                                           "127",
                                           "-128",
                                           "32767",
                                           "65536",
                                           "99999",
                                           "2147483647",
                                           "-2147483648",
                                           "1e9",
                                           "0.25",
                                           "12.5",
                                           "999999999",
                                           "",
                                           " 3",
                                           "nan",
                                           "inf",
                                           "1e39",
                                           "&<>\"'",
                                           "\xc2\xa0",
                                           "\x01",
                                           "\xf0\x9f\x98\x80"};
    const QString name = QString::fromLatin1(p_chance.oneOf(s_names));
    switch (p_chance.below(4)) {
    case 0:
        p_element.removeAttribute(name);
        break;
    case 1:
        p_element.setAttribute(name, p_chance.below(2000) - 500);
        break;
    default:
        p_element.setAttribute(name, QString::fromUtf8(p_chance.oneOf(s_values)));
        break;
    }
}

/** Hangs an element into a branch of another, which gets the branch if it has none. */
void hang(QDomDocument& p_document, QDomElement& p_under, const QDomElement& p_element,
          Chance& p_chance)
{
    const QString name = p_chance.below(4) == 0 ? QStringLiteral("right") : QStringLiteral("left");
    QDomElement branch = p_under.firstChildElement(name);
    if (branch.isNull()) {
        branch = p_document.createElement(name);
        p_under.appendChild(branch);
    }
    branch.appendChild(p_element);
}

QDomElement newChain(QDomDocument& p_document)
{
    QDomElement base = p_document.createElement(QStringLiteral("basenode"));
    p_document.documentElement().insertBefore(base, QDomNode());
    return base;
}

void changeTree(QDomDocument& p_document, const QDomDocument& p_donor, Chance& p_chance)
{
    QVector<QDomElement> modules = modulesOf(p_document);
    if (modules.isEmpty()) {
        QDomElement element = p_document.createElement(s_module);
        element.setAttribute(QStringLiteral("id"), someId(p_chance));
        newChain(p_document).appendChild(element);
        return;
    }
    if (p_chance.below(12) == 0) {
        QDomElement root = p_document.documentElement();
        changeAttribute(root, p_chance);
        return;
    }
    QDomElement element = p_chance.oneOf(modules);
    QDomElement other = p_chance.oneOf(modules);
    QDomElement copy = element.cloneNode(true).toElement();
    switch (p_chance.below(9)) {
    case 0:
        element.parentNode().removeChild(element);
        break;
    case 1:
        other.parentNode().insertAfter(copy, other);
        break;
    case 2:
        hang(p_document, other, copy, p_chance);
        break;
    case 3:
        newChain(p_document).appendChild(copy);
        break;
    case 4:
        element.setAttribute(QStringLiteral("id"), someId(p_chance));
        break;
    case 5: {
        QDomElement fresh = p_document.createElement(s_module);
        fresh.setAttribute(QStringLiteral("id"), someId(p_chance));
        element.parentNode().insertBefore(fresh, element);
        break;
    }
    case 6: {
        const QVector<QDomElement> foreign = modulesOf(p_donor);
        if (!foreign.isEmpty()) {
            const QDomNode taken = p_document.importNode(p_chance.oneOf(foreign), true);
            element.parentNode().insertAfter(taken, element);
        }
        break;
    }
    default:
        changeAttribute(element, p_chance);
        break;
    }
}

/** The text of a document in the canonical form, with the tag right if there is one. */
QByteArray textOf(const QDomDocument& p_document)
{
    QDomElement tag = p_document.elementsByTagName(QStringLiteral("tagCheck")).at(0).toElement();
    if (!tag.isNull()) {
        tag.setAttribute(s_value, QStringLiteral("0"));
        tag.setAttribute(s_value, QString::number(checkTag(documentText(p_document)), 16));
    }
    return documentText(p_document);
}
} // namespace

QByteArray withRightTag(const QByteArray& p_text)
{
    const int tagAt = p_text.indexOf("<tagCheck");
    const int nameAt = tagAt < 0 ? -1 : p_text.indexOf(s_value.toLatin1(), tagAt);
    const int equals = nameAt < 0 ? -1 : p_text.indexOf('=', nameAt);
    QDomDocument document;
    if (equals < 0 || equals + 1 >= p_text.size() || !parseProject(p_text, document)) {
        return p_text;
    }
    const char quote = p_text.at(equals + 1);
    const int end = p_text.indexOf(quote, equals + 2);
    document = canonicalDocument(document);
    textOf(document);
    const QDomElement tag =
        document.elementsByTagName(QStringLiteral("tagCheck")).at(0).toElement();
    if (end < 0 || tag.isNull()) {
        return p_text;
    }
    return p_text.left(equals + 2) + tag.attribute(s_value).toLatin1() + p_text.mid(end);
}

QByteArray withChangedTree(const QByteArray& p_text, const QByteArray& p_donor, quint32 p_seed)
{
    QDomDocument document;
    QDomDocument donor;
    if (!parseProject(p_text, document)) {
        return p_text;
    }
    if (!p_donor.isEmpty() && !parseProject(p_donor, donor)) {
        donor = QDomDocument();
    }
    document = canonicalDocument(document);
    Chance chance(p_seed);
    changeTree(document, donor, chance);
    return textOf(document);
}
