#include "support/canvas/singleblock.h"

#include "modules/supermodule.h"

#include <QPainter>

BlockAttributes parsedAttributes(const QString& p_text)
{
    BlockAttributes attributes;
    const QStringList list = p_text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& each : list) {
        attributes.insert(each.section(QLatin1Char('='), 0, 0), each.section(QLatin1Char('='), 1));
    }
    return attributes;
}

QString joinedAttributes(const BlockAttributes& p_attributes)
{
    QStringList list;
    for (auto it = p_attributes.cbegin(); it != p_attributes.cend(); ++it) {
        list << it.key() + QLatin1Char('=') + it.value();
    }
    return list.join(QLatin1Char(' '));
}

BlockAttributes allAttributes(const QDomElement& p_element)
{
    BlockAttributes attributes;
    const QDomNamedNodeMap stored = p_element.attributes();
    for (int i = 0; i < stored.size(); ++i) {
        attributes.insert(stored.item(i).nodeName(), stored.item(i).nodeValue());
    }
    return attributes;
}

BlockAttributes ownAttributes(const QDomElement& p_element)
{
    BlockAttributes attributes = allAttributes(p_element);
    for (const char* common : {"x", "y", "id", "ownid", "moduleKey"}) {
        attributes.remove(QString::fromLatin1(common));
    }
    return attributes;
}

BlockAttributes ownAttributes(const supermodule* p_module)
{
    QDomDocument document;
    return ownAttributes(storedBlock(p_module, document));
}

QDomElement storedBlock(const supermodule* p_module, QDomDocument& p_document)
{
    QDomElement parent = p_document.createElement(QStringLiteral("parent"));
    p_document.appendChild(parent);
    p_module->saveXml(parent, p_document);
    return parent.lastChildElement();
}

void loadBlock(supermodule* p_module, const QString& p_attributes)
{
    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("module"));
    const BlockAttributes attributes = parsedAttributes(p_attributes);
    for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
        element.setAttribute(it.key(), it.value());
    }
    p_module->loadXml(element);
}

QImage emptyGround()
{
    QImage image(140, 160, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(10, 20, 30));
    return image;
}

QImage paintedBlock(supermodule* p_module)
{
    QImage image = emptyGround();
    QPainter painter(&image);
    p_module->paint(&painter, nullptr, nullptr);
    return image;
}
