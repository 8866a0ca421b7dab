#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// What is asked of the update service and what its answers mean. docs/update-service.md tells the
// same to those who run one.

/** Who is asked about. */
extern const char s_programId[];
extern const char s_firmwareId[];

/** An answer of the update service. Unless state is 1, all but msg is empty. */
struct UpdateRecord {
    int state = 0;
    QString content;      /**< release notes in Simplified Chinese */
    QString en_content;   /**< in English */
    QString ftzw_content; /**< in Traditional Chinese */
    int update = 0;       /**< other than 0: the user can't decline */
    QString appurl;       /**< where to download */
    QString msg;          /**< what the service says is wrong */
    QString appversion;   /**< what is offered */

    bool isValid() const { return state == 1; }
};

/** The address to ask at, given the service's base address and who is asked about. */
QString updateQuery(const QString& p_base, const QString& p_id);

/** The record in an answer; none if that is no JSON. */
std::optional<UpdateRecord> parseUpdateReply(const QByteArray& p_reply);

/** The release notes for a LanguageCode. */
QString releaseNotes(const UpdateRecord& p_record, int p_languageCode);

/** Whether a version that is offered is newer than the one that is there. */
bool isNewerVersion(const QString& p_offered, const QString& p_present);

/** Whether something may be downloaded from an address: over HTTPS alone. */
bool mayDownloadFrom(const QString& p_address);
