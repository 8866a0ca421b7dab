#include "fuzztarget.h"

#include <cstdio>
#include <cstdlib>

void fuzzCheck(bool p_good, const char* p_message)
{
    if (!p_good) {
        std::fprintf(stderr, "Broken: %s\n", p_message);
        std::abort();
    }
}
