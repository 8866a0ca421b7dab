#include <QTextCodec>

// To be preloaded into a program: makes Qt take GB 18030 for the code page, as on a Chinese
// Windows. Where Qt takes every locale's one for UTF-8, nothing else does it.
namespace
{
struct ChineseCodePage {
    ChineseCodePage() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("GB18030")); }
};
const ChineseCodePage s_codePage;
} // namespace
