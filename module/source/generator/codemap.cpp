#include "generator/codemap.h"

#include <algorithm>
#include <utility>

namespace
{
/** The end of the line that begins at p_from. */
int lineEnd(const QString& p_text, int p_from)
{
    const int end = p_text.indexOf(QLatin1Char('\n'), p_from);
    return end < 0 ? p_text.size() : end;
}

/** One line before and after the layout, by its ends; before it there are no blanks. */
struct Line {
    int from;
    int to;
    int laidOutFrom;
    int laidOutTo;
};

/** The first line that p_isWanted takes; the ends of the texts when it takes none. */
template <class Wanted>
Line findLine(const QString& p_raw, const QString& p_laidOut, Wanted p_isWanted)
{
    int laidOutFrom = 0;
    for (int from = 0; from < p_raw.size();) {
        const int to = lineEnd(p_raw, from);
        // The layout drops empty lines and keeps the others' order.
        if (to > from) {
            const Line line{from, to, laidOutFrom, lineEnd(p_laidOut, laidOutFrom)};
            if (p_isWanted(line)) {
                return line;
            }
            laidOutFrom = line.laidOutTo + 1;
        }
        from = to + 1;
    }
    return {p_raw.size(), p_raw.size(), p_laidOut.size(), p_laidOut.size()};
}
} // namespace

CodeMap::CodeMap(const QString& p_raw, const QString& p_laidOut, QVector<FragmentPlace> p_places)
    : m_raw(p_raw), m_laidOut(p_laidOut), m_places(std::move(p_places))
{
}

int CodeMap::laidOut(int p_raw) const
{
    const Line line =
        findLine(m_raw, m_laidOut, [p_raw](const Line& p_line) { return p_raw <= p_line.to; });
    return p_raw <= line.from ? line.laidOutFrom : line.laidOutTo - (line.to - p_raw);
}

int CodeMap::raw(int p_laidOut) const
{
    const Line line = findLine(m_raw, m_laidOut, [p_laidOut](const Line& p_line) {
        return p_laidOut <= p_line.laidOutTo;
    });
    // The last letter stands for the line's end, the first for the blanks before it.
    return qBound(line.from, line.to - (line.laidOutTo - p_laidOut), qMax(line.from, line.to - 1));
}

CodeMap::Part CodeMap::partOf(int p_key) const
{
    const auto place =
        std::find_if(m_places.cbegin(), m_places.cend(),
                     [p_key](const FragmentPlace& p_place) { return p_place.key == p_key; });
    if (place == m_places.cend()) {
        return {};
    }
    int from = place->from;
    int to = place->from + place->size;
    while (from < to && m_raw.at(from) == QLatin1Char('\n')) {
        ++from;
    }
    while (from < to && m_raw.at(to - 1) == QLatin1Char('\n')) {
        --to;
    }
    return from == to ? Part() : Part{laidOut(from), laidOut(to)};
}

int CodeMap::keyAt(int p_position) const
{
    const int at = raw(p_position);
    const auto place =
        std::find_if(m_places.cbegin(), m_places.cend(), [at](const FragmentPlace& p_place) {
            return p_place.from <= at && at < p_place.from + p_place.size;
        });
    return place == m_places.cend() ? NoKey : place->key;
}
