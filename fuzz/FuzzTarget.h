#pragma once
// The entry point libFuzzer calls: a failed check prints what went wrong and
// aborts, so the fuzzer keeps the input as a crasher.
#include "Checks.h"
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#define TANDREL_FUZZ_TARGET(check)                                                  \
    extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)         \
    {                                                                               \
        const QString failure = check(QByteArrayView(data, qsizetype(size)));       \
        if (!failure.isEmpty()) {                                                   \
            std::fprintf(stderr, "check failed: %s\n", qPrintable(failure));       \
            std::abort();                                                           \
        }                                                                           \
        return 0;                                                                   \
    }
