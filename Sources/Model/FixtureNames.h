// SPDX-License-Identifier: MIT
#pragma once

#include <string>

class DeviceModel;

// The names of a fixture: what the operator may call it.

enum class NameFault
{
    None,
    NoManufacturer,
    NoProduct,
    ProductTaken ///< by another fixture: documents and the library know a fixture by its product
};

/// What stands against these names for a fixture of the library; `present` is its product so far,
/// empty for a new one. Blanks alone are no name: nobody could see it in the list.
[[nodiscard]] NameFault FindNameFault(const DeviceModel& library, const std::wstring& present,
                                      const std::wstring& manufacturer,
                                      const std::wstring& product);

/// A name as it comes back from a saved library. Most do as they are; a name that holds a character
/// reference such as "&#x41;" comes back with the character.
[[nodiscard]] std::wstring NameInFile(const std::wstring& name);
