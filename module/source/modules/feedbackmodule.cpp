#include "modules/feedbackmodule.h"

FeedbackModule::FeedbackModule()
    : supermodule(0, QStringLiteral(":/feedback.png"), QStringLiteral(":/feedback.png"), QString())
{
}

supermodule* FeedbackModule::clone() const { return new FeedbackModule(*this); }
