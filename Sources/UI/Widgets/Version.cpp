// SPDX-License-Identifier: MIT
#include "UI/Widgets/Version.h"

QString ProgramVersion()
{
    return QStringLiteral(PIXELWEFT_VERSION);
}

QString ProgramTitle()
{
    return QStringLiteral("Zentri PixelWeft ") + ProgramVersion();
}
