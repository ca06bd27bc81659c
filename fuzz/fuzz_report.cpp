// libFuzzer harness: a whole game: map and planet reports, per-player or old-style.

#include "FuzzEntries.h"
#include "FuzzScratch.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzzentry::loadReportFiles(fuzzScratchDir(), QByteArrayView(data, qsizetype(size)));
    return 0;
}
