// Many descriptions read by one run of tshark. The texts are the packets of a capture file whose link type is
// one of those kept for private use; an option tells tshark that it carries SDP.
#include "ForeignReader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>

namespace interop {

namespace {

constexpr std::uint32_t kLinkTypeUser0 = 147;

void Put(std::ofstream& file, std::initializer_list<std::uint32_t> words) {
    for (const std::uint32_t word : words) {
        file.write(reinterpret_cast<const char*>(&word), sizeof word);
    }
}

/// A capture file in the byte order of this machine, one packet per text.
void WriteCapture(const std::string& path, const std::vector<std::string>& texts) {
    std::ofstream file(path, std::ios::binary);
    constexpr std::uint32_t kMagic = 0xa1b2c3d4;
    constexpr std::uint32_t kVersion24 = 0x00040002;
    constexpr std::uint32_t kLongestPacket = 262144;
    Put(file, {kMagic, kVersion24, 0, 0, kLongestPacket, kLinkTypeUser0});
    for (const std::string& text : texts) {
        const auto length = static_cast<std::uint32_t>(text.size());
        Put(file, {0, 0, length, length});
        file.write(text.data(), static_cast<std::streamsize>(text.size()));
    }
}

std::string OutputOf(const std::string& command) {
    std::string output;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    char buffer[65536];
    while (pipe != nullptr) {
        const std::size_t count = std::fread(buffer, 1, sizeof buffer, pipe.get());
        if (count == 0) {
            break;
        }
        output.append(buffer, count);
    }
    return output;
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

} // namespace

std::vector<Reading> ReadWithTshark(const std::vector<std::string>& texts) {
    const std::string path = ::testing::TempDir() + "interop-" + std::to_string(texts.size()) + ".pcap";
    WriteCapture(path, texts);
    const std::string output = OutputOf(
        "'" TSHARK_PATH "' -r '" + path +
        "' -o 'uat:user_dlts:\"User 0 (DLT=147)\",\"sdp\",\"0\",\"\",\"0\",\"\"' -T fields"
        " -E separator=/t -E aggregator='|' -e sdp.media -e sdp.invalid -e _ws.expert.message 2>/dev/null");
    std::remove(path.c_str());
    std::vector<Reading> readings;
    for (const std::string& line : Split(output, '\n')) {
        std::vector<std::string> fields = Split(line, '\t');
        fields.resize(3);
        Reading reading;
        reading.sections = Split(fields[0], '|');
        reading.complaint = fields[1] + fields[2];
        reading.isTaken = reading.complaint.empty();
        readings.push_back(reading);
    }
    return readings;
}

} // namespace interop
