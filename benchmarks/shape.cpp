#include "shape.h"

#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/moduleregistry.h"
#include "modules/supermodule.h"

#include <QFile>
#include <QGraphicsScene>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <cstdio>

QVector<Shape> readShapes(const QString& p_path)
{
    QVector<Shape> shapes;
    QFile file(p_path);
    QJsonParseError error;
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s can't be read\n", qPrintable(p_path));
        return shapes;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (document.isNull()) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(p_path), qPrintable(error.errorString()));
        return shapes;
    }
    const QJsonArray rows = document.object().value(QStringLiteral("shapes")).toArray();
    for (const QJsonValue& row : rows) {
        shapes.append({row.toObject().value(QStringLiteral("name")).toString(),
                       row.toObject().value(QStringLiteral("pattern")).toString()});
    }
    return shapes;
}

bool buildShape(const Shape& p_shape, int p_count, supermodule* p_main)
{
    const QStringList words = p_shape.pattern.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    int made = 0;
    supermodule* last = p_main->lastOf();
    while (made < p_count) {
        const int before = made;
        QVector<supermodule*> loops;
        LinkType link = NextLink;
        for (const QString& word : words) {
            if (word == QLatin1String("[")) {
                loops.append(last);
                link = LeftLink;
            } else if (word == QLatin1String("]")) {
                if (loops.isEmpty()) {
                    return false;
                }
                last = loops.takeLast();
                link = NextLink;
            } else if (made < p_count) {
                bool isNumber = false;
                const int id = word.toInt(&isNumber);
                supermodule* module = isNumber ? createModuleFromId(id) : nullptr;
                if (!module) {
                    return false;
                }
                module->enterScene(p_main->scene());
                module->moduleKey = ModuleRegistry::add(module);
                last->hangModule(link, module);
                last = module;
                link = NextLink;
                ++made;
            }
        }
        if (made == before) {
            return false;
        }
    }
    p_main->updateTreeAndOpacity();
    return true;
}
