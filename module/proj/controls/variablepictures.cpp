#include "proj/controls/variablepictures.h"

namespace
{
struct PictureRow {
    uint32_t key;
    const char* stem;
};

const PictureRow s_pictures[] = {
    {0x1, "zhengxingbianliang"},
    {0x2, "fudianbianliang"},
    {0x4, "monibianliang"},
    {0x8, "shuzishurubianliang"},
    {0x10, "EEPROMbianliang"},
    {0x20000, "tuxiangshibei"},
    {0x40000, "yuyinshibiebianliang"},
    {0x1000000, "controlbianliang"},
    {0x800000, "duojijiaodubianliang"},
    {0x20, "anniubianliang"},
    {0x40, "liangdubianliang"},
    {0x80, "wendubianliang"},
    {0x100, "ciminbianliang"},
    {0x200, "kaiguanbianliang"},
    {0x400, "huidubianliang"},
    {0x800, "huoyanbianliang"},
    {0x1000, "shengyinbianliang"},
    {0x2000, "shijianbianliang"},
    {0x10000, "hongwaicejubianliang"},
    {0x80000, "5gray bianliang"},
    {0x100000, "dianweiqbianliang"},
    {0x200000, "ultrasonicbianliang"},
    {0x400000, "shidubianliang"},
    {0x4000, "luojibianliang"},
    {0x8000, "suijishubianliang"},
    {0x2000000, "canshubianliang"},
};
} // namespace

VariablePictures variablePictures(uint32_t p_key)
{
    for (const PictureRow& row : s_pictures) {
        if (row.key == p_key) {
            const QString stem = QString::fromLatin1(row.stem);
            return {QStringLiteral(":/%1-nol.png").arg(stem),
                    QStringLiteral(":/%1-pre.png").arg(stem)};
        }
    }
    return {};
}
