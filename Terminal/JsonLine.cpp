#include "Terminal/JsonLine.h"

#include <iostream>
#include <nlohmann/json.hpp>

namespace anadrome::terminal {

void printJsonLine(const nlohmann::json& object) {
    std::cout << object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << std::endl;
}

} // namespace anadrome::terminal
