// SPDX-License-Identifier: MIT
// The main of every test program that needs a window system: the cases run as a user without files
// or settings, so that nothing of the real user is read or written.
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const Support::TemporaryFolder home;
    home.UseAsHome();
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
