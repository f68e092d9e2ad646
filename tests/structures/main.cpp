// The test program of the packed structures and the core map. The core map finds its
// file below QCoreApplication::applicationDirPath(), so a QCoreApplication lives for the
// whole run.

#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
