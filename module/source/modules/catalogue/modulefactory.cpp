#include "modules/catalogue/modulefactory.h"

#include "modules/catalogue/blockcatalogue.h"
#include "modules/catalogue/blocktables.h"
#include "modules/supermodule.h"

supermodule* createModule(int p_id, const QString& p_imagePath, const QString& p_pressedPath,
                          const QString& p_text)
{
    const CatalogueRow* row = findCatalogueRow(p_id);
    return row && row->create ? row->create(p_id, p_imagePath, p_pressedPath, p_text) : nullptr;
}

supermodule* createModuleFromId(int p_id)
{
    const BlockRecord* record = findBlockRecord(p_id);
    if (!record) {
        // In release builds too: going on would mean a block that nothing knows.
        qt_assert("module", "supermodule", 491);
        return nullptr;
    }
    supermodule* module = createModule(p_id, record->image, record->pressedImage, record->caption);
    if (module) {
        module->createCollisions();
    }
    return module;
}
