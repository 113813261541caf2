#pragma once

// A property a fuzz target holds its code to. A broken one ends the run the way a crash does, so
// the fuzzer keeps the input that broke it.
[[noreturn]] void fuzzFailure(const char* condition, const char* file, int line);

#define FUZZ_CHECK(condition)                                                                                          \
    do {                                                                                                               \
        if (!(condition))                                                                                              \
            fuzzFailure(#condition, __FILE__, __LINE__);                                                               \
    } while (false)
