// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <span>
#include <vector>

#include <QPointF>
#include <QSizeF>
#include <QString>

// The numbers in a drawing of elements: as large as they can be without touching each other.

/// An element in the drawing, in any unit of length.
struct NumberedPlace
{
    int number = 0;
    QPointF centre;
    QSizeF size; ///< of the upright box round it
};

/// Numbers below this size (in points) can't be read in the dark: a larger drawing is needed.
inline constexpr double SmallestNumber = 5.5;
inline constexpr double LargestNumber = 16;

/// A number in the drawing, or the numbers of elements that lie on each other.
struct LayoutNumber
{
    QString text;
    QPointF centre;
    double points = LargestNumber; ///< the size at which it just touches no other, at most
                                   ///< LargestNumber, and no larger than its element needs
};

/// How large a text is in the drawing's unit for each point of its size.
struct NumberExtent
{
    std::function<double(const QString&)> width;
    double height = 1;
};

/// `mostZoom` is how much larger the drawing can still become: elements whose numbers would touch
/// even then share one text, such as "12, 13" or "20-34".
[[nodiscard]] std::vector<LayoutNumber> NumbersIn(std::span<const NumberedPlace> places,
                                                  const NumberExtent& extent, double mostZoom);

/// Numbers in rising order with runs of three or more in short: "1-12, 15, 16". Beyond `mostRuns`
/// parts it ends with how many more there are: "1-12, 15 +3".
[[nodiscard]] QString NumberRuns(std::span<const int> numbers, int mostRuns);
