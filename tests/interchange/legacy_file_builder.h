#pragma once

// Legacy ".qnd" images laid byte by byte from the record layout, independently of the converter:
// records of 80 bytes from 1, nodes from record 80, then the pipes.

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace quench::testing {

class LegacyFileBuilder {
public:
    LegacyFileBuilder() : bytes_(79 * 80, 0) {
        PutInt(1, 0, 501);
        PutInt(1, 2, 1134);
    }

    void PutInt(int record, int offset, std::int16_t value) {
        const auto bits = static_cast<std::uint16_t>(value);
        Byte(record, offset) = static_cast<std::uint8_t>(bits & 0xFF);
        Byte(record, offset + 1) = static_cast<std::uint8_t>(bits >> 8);
    }
    void PutFloat(int record, int offset, float value) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, 4);
        for (int index = 0; index < 4; ++index) {
            Byte(record, offset + index) = static_cast<std::uint8_t>((bits >> (8 * index)) & 0xFF);
        }
    }
    void PutText(int record, int offset, const std::string& text, int width) {
        for (int index = 0; index < width; ++index) {
            Byte(record, offset + index) = static_cast<std::uint8_t>(
                index < static_cast<int>(text.size()) ? text[index] : ' ');
        }
    }

    // A node record after the ones already added; values as the old program kept them.
    void AddNode(std::int16_t number, float k100, float elevation10, float flow10,
                 float pressure100, float area, const std::string& group) {
        const int record = 80 + nodes_;
        ++nodes_;
        PutInt(record, 0, number);
        PutFloat(record, 2, k100);
        PutFloat(record, 6, elevation10);
        PutFloat(record, 10, flow10);
        PutFloat(record, 14, pressure100);
        PutFloat(record, 18, area);
        PutText(record, 22, group, 1);
        PutText(record, 23, "", 57);
        PutInt(1, 8, static_cast<std::int16_t>(nodes_));
    }

    struct Pipe {
        std::int16_t Begin = 0, End = 0;
        float Diameter1000 = 0, TotalLength10 = 0;
        std::int16_t Material = 1, Active = 1;
        float Length10 = 0;
        std::int16_t Fittings[7] = {};
        float NonStandard = 0;
        char TypeGroup = '0';
    };

    // Pipes go after every node: add the nodes first.
    void AddPipe(const Pipe& pipe) {
        const int record = 80 + nodes_ + pipes_;
        ++pipes_;
        PutInt(record, 0, pipe.Begin);
        PutInt(record, 2, pipe.End);
        PutFloat(record, 4, pipe.Diameter1000);
        PutFloat(record, 8, pipe.TotalLength10);
        PutInt(record, 12, pipe.Material);
        PutInt(record, 14, pipe.Active);
        PutFloat(record, 16, pipe.Length10);
        for (int kind = 0; kind < 7; ++kind) {
            PutInt(record, 20 + 2 * kind, pipe.Fittings[kind]);
        }
        PutFloat(record, 38, pipe.NonStandard);
        PutText(record, 42, std::string(1, pipe.TypeGroup), 1);
        PutText(record, 43, "", 37);
        PutInt(1, 10, static_cast<std::int16_t>(2 * pipes_));
    }

    const std::vector<std::uint8_t>& Bytes() const { return bytes_; }

    static std::int16_t IntAt(const std::vector<std::uint8_t>& bytes, int record, int offset) {
        const std::size_t at = static_cast<std::size_t>(record - 1) * 80 + offset;
        return static_cast<std::int16_t>(bytes.at(at) | (bytes.at(at + 1) << 8));
    }
    static float FloatAt(const std::vector<std::uint8_t>& bytes, int record, int offset) {
        const std::size_t at = static_cast<std::size_t>(record - 1) * 80 + offset;
        std::uint32_t bits = 0;
        for (int index = 3; index >= 0; --index) {
            bits = (bits << 8) | bytes.at(at + index);
        }
        float value = 0;
        std::memcpy(&value, &bits, 4);
        return value;
    }
    static std::string TextAt(const std::vector<std::uint8_t>& bytes, int record, int offset,
                              int width) {
        const std::size_t at = static_cast<std::size_t>(record - 1) * 80 + offset;
        return std::string(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                           bytes.begin() + static_cast<std::ptrdiff_t>(at + width));
    }

private:
    std::uint8_t& Byte(int record, int offset) {
        const std::size_t at = static_cast<std::size_t>(record - 1) * 80 + offset;
        if (bytes_.size() < (at / 80 + 1) * 80) {
            bytes_.resize((at / 80 + 1) * 80, 0);
        }
        return bytes_[at];
    }

    std::vector<std::uint8_t> bytes_;
    int nodes_ = 0;
    int pipes_ = 0;
};

} // namespace quench::testing
