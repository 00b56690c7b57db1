#include "Platform/Photos/MovieName.h"

namespace anadrome {

std::string movieName(std::time_t time) {
    std::tm local{};
    ::localtime_r(&time, &local);
    char name[64];
    std::strftime(name, sizeof name, "%Y-%m-%d %H.%M.%S", &local);
    return name;
}

} // namespace anadrome
