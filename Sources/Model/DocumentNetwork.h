// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace tinyxml2 {
class XMLElement;
}

/// The network text of a <Mapping> element, such as 2.X.X.X: its attribute "network" when it has
/// one, otherwise the older "broadcastAddress" as dotted text with an X for each 255. Empty when
/// the attribute names no network or there is none.
[[nodiscard]] std::wstring DocumentNetwork(const tinyxml2::XMLElement& mapping);
