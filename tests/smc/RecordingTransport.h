#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/SmcConnection.h"
#include "smc/csmc.h"

namespace corvane {

/// A record as it goes over the wire.
using WireRecord = std::array<std::uint8_t, 80>;

/// Puts a record together by the offsets of the wire format, independently of `SmcRecord`.
class Wire {
public:
    explicit Wire(std::uint8_t command) { bytes_[42] = command; }

    /// The key's letters, which the wire carries last letter first.
    Wire& key(std::string_view letters) { return fourLetters(0, letters); }
    Wire& size(std::uint8_t size) { return byte(28, size); }
    Wire& type(std::string_view letters) { return fourLetters(32, letters); }
    /// Below 65536.
    Wire& index(std::uint16_t index) {
        byte(44, static_cast<std::uint8_t>(index & 0xFFU));
        return byte(45, static_cast<std::uint8_t>(index >> 8U));
    }
    Wire& value(const std::vector<std::uint8_t>& value) {
        for (std::size_t i = 0; i < value.size(); ++i) {
            bytes_.at(48 + i) = value[i];
        }
        return *this;
    }

    operator WireRecord() const { return bytes_; }

private:
    Wire& byte(std::size_t offset, std::uint8_t value) {
        bytes_.at(offset) = value;
        return *this;
    }
    Wire& fourLetters(std::size_t offset, std::string_view letters) {
        for (std::size_t i = 0; i < letters.size(); ++i) {
            byte(offset + 3 - i, static_cast<std::uint8_t>(letters[i]));
        }
        return *this;
    }

    WireRecord bytes_ = {};
};

/// What every command on a key begins with.
inline WireRecord infoRequest(std::string_view key) {
    return Wire(9).key(key);
}

/// A connection that keeps what is sent, byte by byte, and answers from a script. While it lives, the SMC
/// layer uses it.
class RecordingTransport final : public SmcConnection {
public:
    using Answer = std::function<std::int32_t(SmcRecord& record)>;

    RecordingTransport() { csmc_use_connection(this); }
    RecordingTransport(const RecordingTransport&) = delete;
    RecordingTransport& operator=(const RecordingTransport&) = delete;
    ~RecordingTransport() override { csmc_use_connection(nullptr); }

    std::int32_t open() override {
        ++openCalls;
        return openCode;
    }

    /// Without a scripted answer the record comes back as it went, with success.
    std::int32_t exchange(SmcRecord& record) override {
        if (!answersForEver) {
            sent.push_back(std::bit_cast<WireRecord>(record));
        }
        if (next_ >= answers_.size()) {
            return 0;
        }
        const Answer& answer = answers_[next_];
        next_ = answersForEver ? (next_ + 1) % answers_.size() : next_ + 1;
        return answer(record);
    }

    /// The next answers, one call each.
    RecordingTransport& info(std::uint32_t size, std::uint32_t type, std::uint8_t attributes = 0) {
        return then([=](SmcRecord& record) {
            record.keyInfo.dataSize = size;
            record.keyInfo.dataType = type;
            record.keyInfo.dataAttributes = attributes;
            return 0;
        });
    }
    RecordingTransport& value(std::vector<std::uint8_t> bytes) {
        return then([bytes = std::move(bytes)](SmcRecord& record) {
            for (std::size_t i = 0; i < bytes.size(); ++i) {
                record.bytes.at(i) = bytes[i];
            }
            return 0;
        });
    }
    RecordingTransport& key(std::uint32_t packed) {
        return then([=](SmcRecord& record) {
            record.key = packed;
            return 0;
        });
    }
    RecordingTransport& accepted() {
        return then([](SmcRecord& /*record*/) { return 0; });
    }
    /// The controller's own refusal.
    RecordingTransport& result(std::uint8_t result) {
        return then([=](SmcRecord& record) {
            record.result = result;
            return 0;
        });
    }
    /// The platform's failure, with a record full of rubbish.
    RecordingTransport& fails(std::int32_t code) {
        return then([=](SmcRecord& record) {
            record.bytes.fill(0xEE);
            record.result = 0x84;
            record.keyInfo.dataSize = 0xEEEEEEEE;
            return code;
        });
    }
    RecordingTransport& then(Answer answer) {
        answers_.push_back(std::move(answer));
        return *this;
    }

    std::int32_t openCode = 0;
    int openCalls = 0;
    std::vector<WireRecord> sent;
    /// The script starts again at its end, and nothing is kept of what is sent.
    bool answersForEver = false;

private:
    std::deque<Answer> answers_;
    std::size_t next_ = 0;
};

}  // namespace corvane
