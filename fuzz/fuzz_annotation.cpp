// libFuzzer harness: the annotation file, loaded and replayed onto a picture.

#include "FuzzEntries.h"
#include "FuzzScratch.h"

#include <QGuiApplication>
#include <cstddef>
#include <cstdint>

// Texts are drawn with fonts, which need the application object; the
// fuzzer's own arguments are kept away from Qt's option parsing.
extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz-annotation";
    static char *argv[] = {name, nullptr};
    static QGuiApplication app(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzzentry::loadAnnotationFile(fuzzScratchDir(), QByteArrayView(data, qsizetype(size)));
    return 0;
}
