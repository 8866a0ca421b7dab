#pragma once

#include "modules/supermodule.h"

/**
 * The drop preview: a plain block that the view puts into the program where a dragged block would
 * land. Its id is 0 like the main block's, so it is told apart by identity.
 */
class FeedbackModule : public supermodule
{
    Q_OBJECT

public:
    FeedbackModule();

    QString cCode() const override { return QString(); }
    supermodule* clone() const override;
    bool isPreview() const override { return true; }
};
