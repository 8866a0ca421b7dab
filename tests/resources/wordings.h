#pragma once

#include <QString>
#include <QVector>

/** A text of a context as the sources have it, and the English that the program says for it. */
struct Wording {
    QString context;
    QString source;
    QString english;
};

/** Every text whose English is settled, in each context that says it, with no row twice. */
const QVector<Wording>& wordings();
