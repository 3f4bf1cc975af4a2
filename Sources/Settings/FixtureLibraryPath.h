// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// The library that the program carries.
inline const QString BuiltInLibraryPath = QStringLiteral(":/wfl/Resources/LEDFixtureLib.wfl");
/// The bytes of its file.
[[nodiscard]] QByteArray BuiltInLibrary();

/// The path of the user's fixture library, whether it is there or not; for those who only read.
/// Empty when the user has no data folder.
[[nodiscard]] QString FindFixtureLibrary();

/// The same. If there is none, makes its folder and copies the program's own library there; an
/// existing one keeps its contents. When the copy fails the debug output says so, and the path is
/// returned all the same.
[[nodiscard]] QString GetFixtureLibraryPath();
