// SPDX-License-Identifier: MIT
#include <cstdlib>

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "Support/TemporaryFolder.h"

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Nothing of the user who runs the tests is read or written.
    const Support::TemporaryFolder home;
    setenv("HOME", home.Path().c_str(), 1);
    setenv("XDG_DATA_HOME", (home.Path() / "data").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home.Path() / "config").c_str(), 1);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
