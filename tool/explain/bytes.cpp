#include "bytes.h"

namespace bgp::explain {

uint64_t HostNumber(const std::string &value, size_t offset, size_t width)
{
    uint64_t number = 0;
    for (size_t i = width; i-- > 0;) {
        number = number << 8 | static_cast<uint8_t>(offset + i < value.size() ? value[offset + i] : 0);
    }
    return number;
}

uint64_t WireNumber(const std::string &value, size_t offset, size_t width)
{
    uint64_t number = 0;
    for (size_t i = 0; i < width; ++i) {
        number = number << 8 | static_cast<uint8_t>(offset + i < value.size() ? value[offset + i] : 0);
    }
    return number;
}

std::string Bytes(const std::string &value, size_t offset, size_t count)
{
    std::string bytes = offset < value.size() ? value.substr(offset, count) : "";
    bytes.resize(count);
    return bytes;
}

std::string Hex(std::string_view bytes, std::string_view separator)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string hex;
    for (const char character : bytes) {
        const auto byte = static_cast<uint8_t>(character);
        hex += hex.empty() ? "" : separator;
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 15];
    }
    return hex;
}

} // namespace bgp::explain
