#include "project/projectdocument.h"

#include "base/programversion.h"
#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/moduleregistry.h"
#include "modules/moduletree.h"
#include "modules/supermodule.h"
#include "project/checktag.h"
#include "project/programnameholder.h"
#include "project/projectreader.h"

#include <QGraphicsScene>
#include <QHash>

#include <algorithm>

namespace
{
const char s_doctype[] = "vantrel";
const int s_indent = 4;
const char s_tagElement[] = "tagCheck";
const char s_tagValue[] = "value";
// A block without parent is the third element from the outside, and each body adds two.
static_assert(3 + 2 * MaximalNesting <= MaximalProjectDepth, "what is stored must open again");

/** One block from its element, with its bodies; null for an unknown type. */
supermodule* buildModule(const QDomElement& p_element, QGraphicsScene* p_scene)
{
    supermodule* module = buildBlock(p_element, p_scene);
    if (!module) {
        return nullptr;
    }
    const auto readBody = [&](LinkType p_link, const QString& p_name) {
        if (supermodule* body = buildChain(
                p_element.firstChildElement(p_name).firstChildElement(QStringLiteral("module")),
                p_scene)) {
            module->hangModule(p_link, body);
        }
    };
    readBody(LeftLink, QStringLiteral("left"));
    readBody(RightLink, QStringLiteral("right"));
    return module;
}

/**
 * A name as a project can hold it: without halves of characters and the two codes that the parser
 * takes for the end of its input. With one of them the saved project would not open again.
 */
QString storable(const QString& p_name)
{
    QString name;
    for (int i = 0; i < p_name.size(); ++i) {
        const QChar letter = p_name.at(i);
        if (!letter.isSurrogate()) {
            if (letter.unicode() < 0xfffe) {
                name += letter;
            }
        } else if (letter.isHighSurrogate() && i + 1 < p_name.size() &&
                   p_name.at(i + 1).isLowSurrogate()) {
            name += p_name.midRef(i, 2);
            ++i;
        }
    }
    return name;
}

/** The check tag's element as documentText() writes it. */
QByteArray tagText(const QByteArray& p_value)
{
    return QByteArray("<") + s_tagElement + ' ' + s_tagValue + "=\"" + p_value + "\"/>";
}

template <class WriteModules>
QByteArray textOf(const QList<supermodule*>& p_roots, const ProgramNameHolder* p_name,
                  WriteModules p_writeModules)
{
    const StableAttributeOrder order;
    QDomDocument document((QLatin1String(s_doctype)));
    QDomElement root = document.createElement(QStringLiteral("vantrel"));
    root.setAttribute(QStringLiteral("version"), programVersion());
    root.setAttribute(QStringLiteral("company"), QStringLiteral("Korvane"));
    root.setAttribute(QStringLiteral("app"), QStringLiteral("vantrel.exe"));
    if (p_name) {
        root.setAttribute(QStringLiteral("downname"), storable(p_name->programName()));
    }
    document.appendChild(root);
    for (const supermodule* head : p_roots) {
        QDomElement baseNode = document.createElement(QStringLiteral("basenode"));
        root.appendChild(baseNode);
        p_writeModules(baseNode, document, head);
    }
    QDomElement tag = document.createElement(QLatin1String(s_tagElement));
    tag.setAttribute(QLatin1String(s_tagValue), QStringLiteral("0"));
    root.appendChild(tag);
    QByteArray text = documentText(document);
    // The tag is taken of the text with the value "0" and then put in that value's place: a large
    // document takes its time to become text, so not once more with the tag in it.
    const QByteArray zero = tagText("0");
    const QByteArray value = QByteArray::number(checkTag(text), 16);
    text.replace(text.lastIndexOf(zero), zero.size(), tagText(value));
    return text;
}
} // namespace

StableAttributeOrder::StableAttributeOrder() : m_seed(qGlobalQHashSeed())
{
    qSetGlobalQHashSeed(0);
}

StableAttributeOrder::~StableAttributeOrder()
{
    // Anything but 0 asks Qt for a new random seed.
    qSetGlobalQHashSeed(m_seed == 0 ? 0 : -1);
}

void writeChain(QDomElement& p_parent, QDomDocument& p_document, const supermodule* p_first,
                SaveModule p_save)
{
    for (const supermodule* module = p_first; module; module = module->next()) {
        (module->*p_save)(p_parent, p_document);
        QDomElement element = p_parent.lastChildElement();
        const auto body = [&](const QString& p_name, const supermodule* p_body) {
            if (p_body) {
                QDomElement branch = p_document.createElement(p_name);
                element.appendChild(branch);
                writeChain(branch, p_document, p_body, p_save);
            }
        };
        body(QStringLiteral("left"), module->left());
        body(QStringLiteral("right"), module->right());
    }
}

supermodule* buildBlock(const QDomElement& p_element, QGraphicsScene* p_scene)
{
    supermodule* module = createKnownModule(p_element.attribute(QStringLiteral("id")).toInt());
    if (!module) {
        return nullptr;
    }
    module->enterScene(p_scene);
    module->loadXml(p_element);
    if (module->id == TaskRootId) {
        taskModules.append(module);
    }
    ModuleRegistry::add(module);
    return module;
}

supermodule* buildChain(const QDomElement& p_first, QGraphicsScene* p_scene)
{
    supermodule* first = nullptr;
    supermodule* last = nullptr;
    for (QDomElement element = p_first; !element.isNull();
         element = element.nextSiblingElement(QStringLiteral("module"))) {
        supermodule* module = buildModule(element, p_scene);
        if (!module) {
            continue;
        }
        if (last) {
            last->appendModule(module);
        } else {
            first = module;
        }
        last = module;
    }
    return first;
}

bool holdsBlocks(const QDomElement& p_project)
{
    const QString baseNode = QStringLiteral("basenode");
    const QString block = QStringLiteral("module");
    for (QDomElement base = p_project.firstChildElement(baseNode); !base.isNull();
         base = base.nextSiblingElement(baseNode)) {
        for (QDomElement each = base.firstChildElement(block); !each.isNull();
             each = each.nextSiblingElement(block)) {
            if (findBlockRecord(each.attribute(QStringLiteral("id")).toInt())) {
                return true;
            }
        }
    }
    return false;
}

QByteArray projectText(const QList<supermodule*>& p_roots, const ProgramNameHolder* p_name)
{
    const auto fits = [](const supermodule* p_root) {
        return nestingDepth(p_root) <= MaximalNesting;
    };
    if (!std::all_of(p_roots.cbegin(), p_roots.cend(), fits)) {
        return QByteArray();
    }
    return textOf(p_roots, p_name,
                  [](QDomElement& p_parent, QDomDocument& p_document, const supermodule* p_head) {
                      writeChain(p_parent, p_document, p_head);
                  });
}

QByteArray temporaryProjectText(const QList<supermodule*>& p_roots, const ProgramNameHolder* p_name)
{
    return textOf(p_roots, p_name,
                  [](QDomElement& p_parent, QDomDocument& p_document, const supermodule* p_head) {
                      p_head->saveXml(p_parent, p_document);
                  });
}

QDomDocument canonicalDocument(const QDomDocument& p_parsed)
{
    QDomDocument document((QLatin1String(s_doctype)));
    document.appendChild(p_parsed.documentElement());
    return document;
}

bool tagFits(QDomDocument& p_document)
{
    const QDomNodeList tags = p_document.elementsByTagName(QLatin1String(s_tagElement));
    if (tags.isEmpty()) {
        // A file without a tag is accepted unchecked.
        return true;
    }
    QDomElement tag = tags.at(0).toElement();
    const quint32 stored = tag.attribute(QLatin1String(s_tagValue)).toUInt(nullptr, 16);
    tag.setAttribute(QLatin1String(s_tagValue), QStringLiteral("0"));
    return checkTag(documentText(p_document)) == stored;
}

QByteArray documentText(const QDomDocument& p_document) { return p_document.toByteArray(s_indent); }
