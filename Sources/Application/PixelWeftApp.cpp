// SPDX-License-Identifier: MIT
#include "Application/PixelWeftApp.h"

#include "Platform/Locale.h"

PixelWeftApp::PlainNumbers::PlainNumbers()
{
    Platform::UseUtf8TextAndPlainNumbers();
}

PixelWeftApp::PixelWeftApp(int& argc, char** argv)
    : QApplication(argc, argv)
{}

bool PixelWeftApp::event(QEvent* event)
{
    return QApplication::event(event);
}
