#pragma once

#include <QString>
#include <QVector>

class supermodule;

/** What gives the fragment of a block in one language. */
using Fragment = QString (supermodule::*)() const;

/** Where the fragment of a block, by its registry key, stands in a text that is put together. */
struct FragmentPlace {
    int key;
    int from;
    int size;
};

/**
 * While it lives, the places of all fragments that appendFragments() appends are written to a list,
 * those of a body before that of the block around it. There is one at a time.
 */
class FragmentRecord
{
public:
    explicit FragmentRecord(QVector<FragmentPlace>& p_places);
    ~FragmentRecord();
    Q_DISABLE_COPY(FragmentRecord)
};

/**
 * Appends the fragments of a chain to a text, one behind the other. A block whose own fragment
 * holds others puts them in by this, behind all that stands before them in it.
 */
void appendFragments(QString& p_text, const supermodule* p_first, Fragment p_fragment);
