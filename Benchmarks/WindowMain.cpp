// SPDX-License-Identifier: MIT
// The main of every benchmark that needs a window system.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include <QApplication>

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
