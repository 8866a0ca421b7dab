#pragma once

#include "modules/fragments.h"

/**
 * Which part of a generated text comes from which block. Blocks are known by their registry keys,
 * so that a map may outlive them. Empty by default.
 */
class CodeMap
{
public:
    /** Letters [from, to) of the text; none where both are equal. */
    struct Part {
        int from = 0;
        int to = 0;

        bool isEmpty() const { return from == to; }
        bool operator==(const Part& p_other) const
        {
            return from == p_other.from && to == p_other.to;
        }
    };

    static constexpr int NoKey = -1;

    CodeMap() = default;
    /**
     * Of a text that bracesToIndent() has laid out; p_raw is what it was before, and the places
     * are those in it, of inner fragments before outer ones.
     */
    CodeMap(const QString& p_raw, const QString& p_laidOut, QVector<FragmentPlace> p_places);

    /**
     * What a block has given, with its body, without line feeds at its ends; with the blanks before
     * it where it begins a line.
     */
    Part partOf(int p_key) const;
    /**
     * The innermost block whose part holds a letter; behind the last letter of a line the one of
     * that letter. NoKey where the text is no block's; 0 is the main block's, which has no key in
     * a document that was begun anew.
     */
    int keyAt(int p_position) const;

private:
    int laidOut(int p_raw) const;
    int raw(int p_laidOut) const;

    QString m_raw;
    QString m_laidOut;
    QVector<FragmentPlace> m_places;
};
