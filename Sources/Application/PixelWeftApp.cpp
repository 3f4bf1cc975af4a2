// SPDX-License-Identifier: MIT
#include "Application/PixelWeftApp.h"

#include <QStyleFactory>

#include "Platform/Locale.h"

PixelWeftApp::Surroundings::Surroundings()
{
    Platform::UseUtf8TextAndPlainNumbers();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
}

PixelWeftApp::PixelWeftApp(int& argc, char** argv)
    : QApplication(argc, argv)
    , window_(boxes_)
{}

bool PixelWeftApp::event(QEvent* event)
{
    return QApplication::event(event);
}
