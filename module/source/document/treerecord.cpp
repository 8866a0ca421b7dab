#include "document/treerecord.h"

#include "modules/documentstate.h"
#include "modules/moduleregistry.h"
#include "modules/supermodule.h"
#include "project/projectdocument.h"

#include <QDataStream>
#include <QDomDocument>
#include <QVector>

namespace
{
struct Place {
    const supermodule* module;
    int parent; /**< index of its parent in the order of writing; -1 for the root */
    LinkType link;
};

void writeAttributes(QDataStream& p_stream, const QDomElement& p_element)
{
    const QDomNamedNodeMap attributes = p_element.attributes();
    p_stream << static_cast<quint8>(attributes.size());
    for (int i = 0; i < attributes.size(); ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        p_stream << attribute.name().toUtf8() << attribute.value().toUtf8();
    }
}

void readAttributes(QDataStream& p_stream, QDomElement& p_element)
{
    quint8 count = 0;
    p_stream >> count;
    for (int i = 0; i < count; ++i) {
        QByteArray name;
        QByteArray value;
        p_stream >> name >> value;
        p_element.setAttribute(QString::fromUtf8(name), QString::fromUtf8(value));
    }
}
} // namespace

TreeRecord::TreeRecord(const supermodule* p_root)
{
    QDataStream stream(&m_data, QIODevice::WriteOnly);
    QDomDocument document;
    QDomElement holder = document.createElement(QStringLiteral("node"));
    QVector<Place> open{{p_root, -1, NoLink}};
    for (int index = 0; !open.isEmpty(); ++index) {
        const Place place = open.takeLast();
        const supermodule* module = place.module;
        stream << static_cast<qint32>(place.parent) << static_cast<qint8>(place.link)
               << static_cast<qint32>(module->registryKey());
        module->saveXml(holder, document);
        writeAttributes(stream, holder.lastChildElement());
        holder.removeChild(holder.lastChild());
        for (const LinkType link : {NextLink, LeftLink, RightLink}) {
            if (const supermodule* child = module->child(link)) {
                open.append({child, index, link});
            }
        }
    }
    m_data.squeeze();
}

supermodule* TreeRecord::rebuild(QGraphicsScene* p_scene) const
{
    QDataStream stream(m_data);
    QDomDocument document;
    QVector<supermodule*> modules;
    while (!stream.atEnd()) {
        qint32 parent = -1;
        qint8 link = NoLink;
        qint32 key = 0;
        stream >> parent >> link >> key;
        QDomElement element = document.createElement(QStringLiteral("module"));
        readAttributes(stream, element);
        // A type that the catalogue can't build is left out with all that hung under it.
        supermodule* above = parent >= 0 ? modules.at(parent) : nullptr;
        supermodule* module = parent >= 0 && !above ? nullptr : buildBlock(element, p_scene);
        if (module && key != 0 && !moduleMap.contains(key)) {
            ModuleRegistry::addAs(key, module);
        }
        if (module && above) {
            above->hangModule(static_cast<LinkType>(link), module);
        }
        modules.append(module);
    }
    return modules.value(0, nullptr);
}
