#pragma once

#include "canvas/linkpreview.h"
#include "document/document.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "support/system/fixturetest.h"

/** A document with its main block at (100, 200), without a view, and the preview of a link. */
struct GestureBench {
    GestureBench() { main()->setPos(100, 200); }
    ~GestureBench() { setDocumentModified(false); }

    Document document;
    LinkPreview preview{document.scene(), document.mainBlock()};

    mainModule* main() const { return document.mainBlock(); }
    supermodule* put(int p_id, const QPointF& p_at)
    {
        supermodule* module = createModuleFromId(p_id);
        module->enterScene(&document.scene());
        ModuleRegistry::add(module);
        module->setPos(p_at);
        return module;
    }
    /** A block at the end of the main chain. */
    supermodule* append(int p_id)
    {
        supermodule* module = put(p_id, QPointF());
        main()->lastOf()->insert(NextLink, module);
        main()->updateTreeAndOpacity();
        return module;
    }
    /** The chain behind the main block, the preview as -1. */
    QList<int> chain() const
    {
        QList<int> list;
        for (const supermodule* module = main()->next(); module; module = module->next()) {
            list.append(module->isPreview() ? -1 : module->id);
        }
        return list;
    }
};
