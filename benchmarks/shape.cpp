#include "shape.h"

#include "modules/catalogue/modulefactory.h"
#include "modules/moduleregistry.h"
#include "modules/supermodule.h"

#include <QFile>
#include <QGraphicsScene>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <cmath>
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
                       row.toObject().value(QStringLiteral("pattern")).toString(),
                       row.toObject().value(QStringLiteral("rows")).toBool()});
    }
    return shapes;
}

namespace
{
const qreal s_rowHeight = 160;

supermodule* putNewBlock(int p_id, QGraphicsScene& p_scene)
{
    supermodule* module = createModuleFromId(p_id);
    if (module) {
        module->enterScene(&p_scene);
        module->moduleKey = ModuleRegistry::add(module);
    }
    return module;
}

/** Hangs p_count blocks behind p_last, which starts with the first where it is null. */
supermodule* buildChain(const Shape& p_shape, int p_count, supermodule* p_last,
                        QGraphicsScene& p_scene)
{
    const QStringList words = p_shape.pattern.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    supermodule* first = p_last;
    supermodule* last = p_last;
    int made = 0;
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
                    return nullptr;
                }
                last = loops.takeLast();
                link = NextLink;
            } else if (made < p_count) {
                bool isNumber = false;
                const int id = word.toInt(&isNumber);
                supermodule* module = isNumber ? putNewBlock(id, p_scene) : nullptr;
                if (!module) {
                    return nullptr;
                }
                if (last) {
                    last->hangModule(link, module);
                } else {
                    first = module;
                }
                last = module;
                link = NextLink;
                ++made;
            }
        }
        if (made == before) {
            return nullptr;
        }
    }
    return first;
}
} // namespace

bool buildShape(const Shape& p_shape, int p_count, supermodule* p_main)
{
    const int row = p_shape.rows
                        ? static_cast<int>(std::ceil(std::sqrt(static_cast<double>(p_count))))
                        : p_count;
    QPointF at = p_main->scenePos();
    for (int made = 0; made < p_count; made += row) {
        supermodule* head = buildChain(p_shape, qMin(row, p_count - made),
                                       made == 0 ? p_main->lastOf() : nullptr, *p_main->scene());
        if (!head) {
            return false;
        }
        if (made > 0) {
            at.ry() += s_rowHeight;
            head->setPos(at);
        }
        head->updateTreeAndOpacity();
    }
    return true;
}
