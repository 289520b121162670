#pragma once
#include <QApplication>
#include <QTest>

// Tests run without a display: the offscreen platform is chosen here too,
// because a test binary may be run outside ctest's environment.
#define TANDREL_TEST_MAIN(TestClass)                                                                     \
    int main(int argc, char *argv[])                                                                     \
    {                                                                                                    \
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))                                              \
            qputenv("QT_QPA_PLATFORM", "offscreen");                                                     \
        QApplication app(argc, argv);                                                                    \
        TestClass tc;                                                                                    \
        QTEST_SET_MAIN_SOURCE_PATH                                                                       \
        return QTest::qExec(&tc, argc, argv);                                                            \
    }
