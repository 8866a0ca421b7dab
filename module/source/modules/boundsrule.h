#pragma once

#include <QtGlobal>

#include <limits>

/**
 * How a block or a whole body grows the four bounds that a walk has found so far, in scene units.
 * Each loop on the way puts its margins on top of what came in, so that bounds don't just unite:
 * the top goes from t to min(t + topShift, top), the right end from r to max(r + rightShift,
 * right). One rule does what a chain of rules does one after the other, which lets a loop be
 * passed in one step, however much is in it.
 */
struct BoundsRule {
    int left = std::numeric_limits<int>::max();
    int top = std::numeric_limits<int>::max();
    int right = std::numeric_limits<int>::min();
    int bottom = std::numeric_limits<int>::min();
    int topShift = 0;
    int rightShift = 0;

    /** Goes on with another rule behind this one. */
    void then(const BoundsRule& p_next)
    {
        left = qMin(left, p_next.left);
        bottom = qMax(bottom, p_next.bottom);
        top = qMin(shifted(top, p_next.topShift), p_next.top);
        topShift += p_next.topShift;
        right = qMax(shifted(right, p_next.rightShift), p_next.right);
        rightShift += p_next.rightShift;
    }
    /** Puts a loop's margins around what was grown so far. */
    void addMargins(int p_above, int p_behind)
    {
        top = shifted(top, -p_above);
        topShift -= p_above;
        right = shifted(right, p_behind);
        rightShift += p_behind;
    }
    /** Grows bounds. */
    void apply(int& p_left, int& p_top, int& p_right, int& p_bottom) const
    {
        p_left = qMin(p_left, left);
        p_top = qMin(p_top + topShift, top);
        p_right = qMax(p_right + rightShift, right);
        p_bottom = qMax(p_bottom, bottom);
    }

private:
    /** A bound that doesn't bind yet stays where it is. */
    static int shifted(int p_bound, int p_shift)
    {
        const bool binds = p_bound != std::numeric_limits<int>::max() &&
                           p_bound != std::numeric_limits<int>::min();
        return binds ? p_bound + p_shift : p_bound;
    }
};
