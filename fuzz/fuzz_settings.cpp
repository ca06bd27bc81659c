// libFuzzer harness: the game's settings file STARS.INI.

#include "FuzzEntries.h"
#include "FuzzScratch.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzzentry::loadSettingsFile(fuzzScratchDir(), QByteArrayView(data, qsizetype(size)));
    return 0;
}
