#include "platform/linux/hwmon/ChipAttribute.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <utility>

namespace corvane {

namespace {

/// Room for any 64-bit number and its line end, and one more byte that shows a longer text.
constexpr std::size_t numberRoom = 24;

}  // namespace

std::optional<std::int64_t> parseNumber(std::string_view text) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    return error == std::errc() && end == text.end() ? std::optional(value) : std::nullopt;
}

ChipAttribute::ChipAttribute(HwmonChip& chip, std::string name, SysfsAccess access)
    : chip_(chip),
      name_(std::move(name)),
      access_(access),
      handle_(chip_.open(name_, access_)),
      openedAt_(chip_.lookups()) {}

std::optional<std::int64_t> ChipAttribute::read() {
    if (!ensureOpen()) {
        return std::nullopt;
    }
    std::array<char, numberRoom> buffer = {};
    const int count = handle_->read(buffer);
    if (count < 0) {
        drop(-count);
        return std::nullopt;
    }
    if (static_cast<std::size_t>(count) >= buffer.size()) {
        return std::nullopt;
    }
    return parseNumber({buffer.data(), static_cast<std::size_t>(count)});
}

bool ChipAttribute::write(std::int64_t value) {
    if (!ensureOpen()) {
        return false;
    }
    std::array<char, numberRoom> buffer = {};
    const auto [end, failure] = std::to_chars(buffer.begin(), buffer.end(), value);
    const int error = handle_->write({buffer.begin(), end});
    if (error != 0) {
        drop(error);
    }
    return error == 0;
}

bool ChipAttribute::ensureOpen() {
    if (handle_ != nullptr) {
        return true;
    }
    if (openedAt_ == chip_.lookups() && !chip_.lookUp()) {
        return false;
    }
    openedAt_ = chip_.lookups();
    handle_ = chip_.open(name_, access_);
    return handle_ != nullptr;
}

/// These errors tell that the file behind the handle no longer exists.
void ChipAttribute::drop(int error) {
    if (error == ENODEV || error == ENXIO || error == ENOENT) {
        handle_.reset();
    }
}

}  // namespace corvane
