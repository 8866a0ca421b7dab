#pragma once

/**
 * Carries a value from one range over to another in proportion, rounded down. A value outside
 * p_inLow to p_inHigh counts as the nearer end, so the result lies in p_outLow to p_outHigh.
 * Each low must be less than its high.
 */
int scale(int p_value, int p_inLow, int p_inHigh, int p_outLow, int p_outHigh);
