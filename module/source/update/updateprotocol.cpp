#include "update/updateprotocol.h"

#include "base/commonhelper.h"
#include "base/systemlanguage.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

const char s_programId[] = "net.korvane.tiler";
const char s_firmwareId[] = "qz417";

QString updateQuery(const QString& p_base, const QString& p_id)
{
    return p_base + QStringLiteral("/app/version?") + QStringLiteral("appid=%1").arg(p_id);
}

std::optional<UpdateRecord> parseUpdateReply(const QByteArray& p_reply)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(p_reply, &error);
    if (error.error != QJsonParseError::NoError) {
        return std::nullopt;
    }
    const QJsonObject object = document.object();
    const auto text = [&object](const char* p_name) {
        return object[QLatin1String(p_name)].toString();
    };
    UpdateRecord record;
    if (!object.contains(QStringLiteral("state"))) {
        record.msg = QCoreApplication::translate("UpgradeDialog", "数据格式错误");
        return record;
    }
    record.state = object[QStringLiteral("state")].toInt();
    record.msg = text("msg");
    if (!record.isValid()) {
        return record;
    }
    record.content = text("content");
    record.en_content = text("en_content");
    record.ftzw_content = text("ftzw_content");
    // Meant: a number in the place of the text counts as 0; the services that exist send texts.
    record.update = text("update").toInt();
    record.appurl = text("appurl");
    record.appversion = text("appversion");
    return record;
}

QString releaseNotes(const UpdateRecord& p_record, int p_languageCode)
{
    switch (p_languageCode) {
    case English:
        return p_record.en_content;
    case TraditionalChinese:
        return p_record.ftzw_content;
    default:
        return p_record.content;
    }
}

bool isNewerVersion(const QString& p_offered, const QString& p_present)
{
    return compareVersions(p_offered, p_present) == 1;
}

bool mayDownloadFrom(const QString& p_address)
{
    const QUrl address(p_address);
    return address.isValid() && address.scheme() == QLatin1String("https");
}
