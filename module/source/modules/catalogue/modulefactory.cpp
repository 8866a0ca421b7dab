#include "modules/catalogue/modulefactory.h"

#include "modules/catalogue/blockcatalogue.h"
#include "modules/catalogue/blocktables.h"
#include "modules/supermodule.h"

namespace
{
supermodule* build(const CatalogueRow& p_row, const QString& p_imagePath,
                   const QString& p_pressedPath, const QString& p_text)
{
    supermodule* module = p_row.create(p_row.id, p_imagePath, p_pressedPath, p_text);
    module->setSelectPicture(QString::fromLatin1(p_row.copyFrame));
    return module;
}
} // namespace

supermodule* createModule(int p_id, const QString& p_imagePath, const QString& p_pressedPath,
                          const QString& p_text)
{
    const BlockRecord* record = findBlockRecord(p_id);
    return record ? build(*record->row, p_imagePath, p_pressedPath, p_text) : nullptr;
}

supermodule* createKnownModule(int p_id)
{
    const BlockRecord* record = findBlockRecord(p_id);
    if (!record) {
        return nullptr;
    }
    supermodule* module = build(*record->row, record->image, record->pressedImage, record->caption);
    module->createCollisions();
    return module;
}

supermodule* createModuleFromId(int p_id)
{
    supermodule* module = createKnownModule(p_id);
    if (!module) {
        // In release builds too: going on would mean a block that nothing knows.
        qt_assert("module", "supermodule", 491);
    }
    return module;
}
