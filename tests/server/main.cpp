// The test program of the plant server. Qt SQL loads its driver as a plugin, which wants a
// QCoreApplication, so one lives for the whole run.

#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
