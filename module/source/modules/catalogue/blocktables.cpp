#include "modules/catalogue/blocktables.h"

#include "modules/catalogue/blockcatalogue.h"

#include <QCoreApplication>
#include <QHash>

namespace
{
struct CategoryRow {
    const char* selectedImage;
    const char* normalImage;
    CategoryId id;
    const char* caption;
    const char* barColour;
};

const CategoryRow s_categories[] = {
    {":/dongzuo-pre.png", ":/dongzuo-nol.png", ActionCategory, QT_TRANSLATE_NOOP("QObject", "动作"),
     "#f94141"},
    {":/shengyin-pre.png", ":/shengyin-nol.png", SoundCategory,
     QT_TRANSLATE_NOOP("QObject", "声音"), "#6743fa"},
    {":/biaoqing-pre.png", ":/biaoqing-nol.png", ExpressionCategory,
     QT_TRANSLATE_NOOP("QObject", "表情"), "#0594ff"},
    {":/kongzhi-pre.png", ":/kongzhi-nol.png", ControlCategory,
     QT_TRANSLATE_NOOP("QObject", "控制"), "#f8b824"},
};
} // namespace

const QVector<CategoryRecord>& categoryRecords()
{
    static const QVector<CategoryRecord> s_records = [] {
        QVector<CategoryRecord> records;
        for (const CategoryRow& row : s_categories) {
            records.append({QString::fromLatin1(row.selectedImage),
                            QString::fromLatin1(row.normalImage), row.id,
                            QCoreApplication::translate("QObject", row.caption),
                            QString::fromLatin1(row.barColour)});
        }
        return records;
    }();
    return s_records;
}

const QVector<BlockRecord>& blockRecords()
{
    static const QVector<BlockRecord> s_records = [] {
        QVector<BlockRecord> records;
        for (const CatalogueRow* row = catalogueBegin(); row != catalogueEnd(); ++row) {
            const QString image = QString::fromLatin1(row->picture);
            records.append({row->category, image, image, row->id, true,
                            QCoreApplication::translate("QObject", row->caption), row});
        }
        return records;
    }();
    return s_records;
}

const BlockRecord* findBlockRecord(int p_id)
{
    static const QHash<int, const BlockRecord*> s_byId = [] {
        QHash<int, const BlockRecord*> byId;
        for (const BlockRecord& record : blockRecords()) {
            byId.insert(record.id, &record);
        }
        return byId;
    }();
    return s_byId.value(p_id, nullptr);
}
