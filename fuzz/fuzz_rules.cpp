#include "FuzzTarget.h"
#include <QGuiApplication>

// Text documents lay out with fonts, which need a GUI application.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication app(*argc, *argv);
    return 0;
}

TANDREL_FUZZ_TARGET(fuzzcheck::rulesDocument)
