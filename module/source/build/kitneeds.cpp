#include "build/kitneeds.h"

#include <QStandardPaths>

QVector<MissingTool> missingTools(const QByteArray& p_messages)
{
    QVector<MissingTool> missing;
// The kit of the other systems brings its own tools.
#ifdef Q_OS_LINUX
    static const MissingTool s_tools[] = {
        {QStringLiteral("make"), QStringLiteral("make")},
        {QStringLiteral("arm-none-eabi-gcc"),
         QStringLiteral("gcc-arm-none-eabi libnewlib-arm-none-eabi")},
        {QStringLiteral("arm-none-eabi-objcopy"), QStringLiteral("binutils-arm-none-eabi")},
    };
    for (const MissingTool& tool : s_tools) {
        if (QStandardPaths::findExecutable(tool.name).isEmpty()) {
            missing.append(tool);
        }
    }
    // The C library is no program: only the compiler tells that it isn't there.
    if (missing.isEmpty() && p_messages.contains("nano.specs")) {
        missing.append({QStringLiteral("nano.specs"), QStringLiteral("libnewlib-arm-none-eabi")});
    }
#else
    Q_UNUSED(p_messages)
#endif
    return missing;
}
