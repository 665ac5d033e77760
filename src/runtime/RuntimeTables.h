#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "connections/clsConnection.h"
#include "runtime/clsRTClockInfo.h"
#include "runtime/clsRTShapeInfo.h"
#include "runtime/clsRTSlideInfo.h"

namespace LF2000 {

/// Connection numbers run from 1 to 999; place 0 of every table is unused.
inline constexpr std::size_t ConnectionPlaces = 1000;
using ConnectionFlags = std::bitset<ConnectionPlaces>;

/// Tables by slide count from 1 as well; place 0 is unused.
using SlideInfoTable = std::vector<clsRTSlideInfo>;
using SlideShapesTable = std::vector<std::vector<clsRTShapeInfo>>;
using SlideClocksTable = std::vector<std::vector<clsRTClockInfo>>;
/// Per slide, the connections that its shapes use.
using UsedConnectionsTable = std::vector<ConnectionFlags>;
/// By connection number formatted "000".
using ConnectionTable = std::map<std::string, std::shared_ptr<clsConnection>, std::less<>>;
/// Per linked source file: path, TAB, last-modified date and time as text.
using LinkedObjectsTable = std::vector<std::string>;

}  // namespace LF2000
