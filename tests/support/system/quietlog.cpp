#include <QCoreApplication>
#include <QLoggingCategory>

namespace
{
void quietLog() { QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); }
} // namespace

// The program tells each step in its log, which in a test is noise.
Q_COREAPP_STARTUP_FUNCTION(quietLog)
