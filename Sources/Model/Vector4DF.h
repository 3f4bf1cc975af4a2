// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>

namespace Zen {

/// The upright rectangle of an element before rotation, in scene pixels, in the order in which the
/// signals carry it.
struct Vector4DF
{
    float left = 0;
    float top = 0;
    float height = 0;
    float width = 0;

    bool operator==(const Vector4DF&) const = default;
};

} // namespace Zen

Q_DECLARE_METATYPE(Zen::Vector4DF)
