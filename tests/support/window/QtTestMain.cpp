#include <QApplication>

#include <gtest/gtest.h>

/// Runs the tests inside an application without a screen.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // The end of one test's window must not end the event loop of the next.
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
