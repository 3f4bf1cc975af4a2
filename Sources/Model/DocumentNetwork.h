// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace tinyxml2 {
class XMLElement;
}

/// The network text of a <Mapping> element: its "network" where that names one, else the older
/// "broadcastAddress" as text with an X for each 255. Empty for none.
[[nodiscard]] std::wstring DocumentNetwork(const tinyxml2::XMLElement& mapping);
