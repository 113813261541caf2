#include "FuzzCheck.h"

#include <cstdio>
#include <cstdlib>

void fuzzFailure(const char* condition, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: property broken: %s\n", file, line, condition);
    std::abort();
}
