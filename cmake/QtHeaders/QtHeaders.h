// SPDX-License-Identifier: MIT
#pragma once

// What most sources that know Qt include, and what costs them most. Each of them names what it uses all the same: the
// checks of clang-tidy read it without this file.

#include <QtWidgets>

#include <algorithm>
#include <array>
#include <bitset>
#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include <boost/container/flat_map.hpp>
#include <boost/container/small_vector.hpp>
#include <boost/container/static_vector.hpp>
