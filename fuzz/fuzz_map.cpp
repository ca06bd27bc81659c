// libFuzzer harness: the universe map file.

#include "FuzzEntries.h"
#include "FuzzScratch.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzzentry::loadMapFile(fuzzScratchDir(), QByteArrayView(data, qsizetype(size)));
    return 0;
}
