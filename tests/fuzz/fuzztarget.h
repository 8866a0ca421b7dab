#pragma once

#include <cstddef>
#include <cstdint>

// What every harness here defines, and what the fuzzer, or replay.cpp in its stead, calls.
extern "C" int LLVMFuzzerInitialize(int* p_argc, char*** p_argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size);

/** Ends the program with a message unless a condition holds: this is how a harness finds a fault.
 */
void fuzzCheck(bool p_good, const char* p_message);
