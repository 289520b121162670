#pragma once
#include <QApplication>
#include <QTest>

// Tests run without a display, in ctest's environment or not.
#define TANDREL_TEST_MAIN(TestClass)                                                                     \
    int main(int argc, char *argv[])                                                                     \
    {                                                                                                    \
        qputenv("QT_QPA_PLATFORM", qEnvironmentVariable("QT_QPA_PLATFORM", "offscreen").toUtf8());       \
        QApplication app(argc, argv);                                                                    \
        TestClass tc;                                                                                    \
        QTEST_SET_MAIN_SOURCE_PATH                                                                       \
        return QTest::qExec(&tc, argc, argv);                                                            \
    }
