#include "modules/chooser.h"

#include "proj/controls/stylesheets.h"

int Chooser::count() const
{
    return entries.count > 0 ? entries.count : static_cast<int>(entries.texts.size());
}

QString Chooser::entry(qint64 p_place) const
{
    const auto texts = entries.texts.begin();
    if (entries.count > 0) {
        return QString::fromLatin1(*texts).arg(entries.first + p_place, entries.digits, 10,
                                               QLatin1Char('0'));
    }
    return 0 <= p_place && p_place < count() ? QString::fromLatin1(texts[p_place]) : QString();
}

QStringList Chooser::allEntries() const
{
    QStringList all;
    for (int place = 0; place < count(); ++place) {
        all.append(entry(place));
    }
    return all;
}

QString Chooser::styleSheet() const
{
    return twoPictureStyle(QString::fromLatin1(style.normalPicture),
                           QString::fromLatin1(style.pressedPicture), style.gap,
                           QString::fromLatin1(style.extra));
}
