// Nothing is read ahead: the survey asks for one file or one line at a time.
//
// Tests: tests/tool/survey.cases
#include "SurveySources.h"

#include "Outcome.h"
#include "ReadFile.h"
#include "RemoteText.h"
#include "SipText.h"
#include "Timeline.h"
#include "Unreadable.h"
#include "Words.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace cmsdp {

namespace {

namespace fs = std::filesystem;

bool NameFolder(const fs::path& folder, const TakeName& take) {
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        entries.push_back(entry->path());
    }
    if (error) {
        return take(folder.string());
    }
    std::sort(entries.begin(), entries.end());
    for (const fs::path& entry : entries) {
        const fs::file_status status = fs::symlink_status(entry, error);
        if (!(fs::is_directory(status) ? NameFolder(entry, take) : take(entry.string()))) {
            return false;
        }
    }
    return true;
}

// A description of a call, with the offer that it answers.
Surveyed ItemOf(const Call& call, const Step& step, const std::string& place) {
    const bool isAnswer = step.kind == StepKind::Answer;
    const Step* const offer = isAnswer && step.partner ? &call.steps[*step.partner] : nullptr;
    const char* const unread = step.isCut           ? "the capture holds only a part of it"
                               : isAnswer && !offer ? "it answers an offer that is not in the input"
                               : isAnswer && offer->isCut
                                   ? "it answers an offer of which the capture holds only a part"
                                   : "";
    return {place, *unread == '\0' ? step.text : "", isAnswer, unread, isAnswer && offer ? offer->text : ""};
}

bool TakeCalls(const std::string& name, const std::vector<Call>& calls, const TakeItem& take) {
    bool isEmpty = true;
    for (const Call& call : calls) {
        for (const Step& step : call.steps) {
            if (step.kind != StepKind::Offer && step.kind != StepKind::Answer) {
                continue;
            }
            isEmpty = false;
            if (!take(ItemOf(call, step, name + ":" + step.place))) {
                return false;
            }
        }
    }
    return !isEmpty || take({name, "", false, "it holds no offer and no answer", ""});
}

// What a line of JSON holds.
Surveyed ItemOf(const std::string& line, const std::string& name, bool remoteAnswers) {
    using Json = nlohmann::json;
    const Json value = Json::parse(line, nullptr, false);
    if (value.is_discarded()) {
        return {name, "", false, "it is no JSON", ""};
    }
    if (!value.is_object() || !value.contains("sdp") || !value["sdp"].is_string()) {
        return {name, "", false, "it has no member \"sdp\" that is a text", ""};
    }
    const bool hasOffer = value.contains("offer") && value["offer"].is_string();
    const bool isAnswer = hasOffer || (value.contains("type") && value["type"] == "answer");
    return {name, value["sdp"].get<std::string>(), remoteAnswers || isAnswer, "",
            hasOffer ? value["offer"].get<std::string>() : ""};
}

// A file that is read, or standard input for "-".
class Descriptor {
public:
    explicit Descriptor(const std::string& file)
        : m_number(file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC)) {}
    ~Descriptor() {
        if (m_number > STDIN_FILENO) {
            close(m_number);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return m_number; }

private:
    int m_number;
};

} // namespace

void NameFiles(const std::vector<std::string>& paths, const TakeName& take) {
    for (const std::string& path : paths) {
        std::error_code error;
        if (!(path != "-" && fs::is_directory(path, error) ? NameFolder(path, take) : take(path))) {
            return;
        }
    }
}

void ReadItems(const std::string& file, bool remoteAnswers, const TakeItem& take) {
    try {
        std::error_code error;
        if (fs::exists(file, error) && !fs::is_regular_file(file, error)) {
            take({file, "", false, "it is no file", ""});
            return;
        }
        std::vector<std::string> notes;
        constexpr std::size_t enough = 16;
        if (IsCapture(ReadStart(file, enough), file)) {
            TakeCalls(file, CallsOfCapture(file, notes), take);
            return;
        }
        std::string text = WithoutSipLog(ReadFile(file), false, notes);
        if (HoldsSipMessages(text)) {
            TakeCalls(file, CallsOfSipText(text, false, notes), take);
        } else {
            RemoteSource source;
            source.name = file;
            source.verb = "survey";
            take({file, CleanedPaste(source, std::move(text), notes), remoteAnswers, "", ""});
        }
    } catch (const ReadError& error) {
        take({file, "", false, error.what(), ""});
    } catch (const ToolError& error) {
        const std::string why = error.what();
        const std::string start = file + ": ";
        take(
            {file, "", false, why.compare(0, start.size(), start) == 0 ? why.substr(start.size()) : why, ""});
    }
}

bool HoldsJsonLines(const std::string& file) {
    const std::string extension = fs::path(file).extension().string();
    if (extension != ".json") {
        return extension == ".jsonl" || extension == ".ndjson";
    }
    constexpr std::size_t most = 65536;
    const std::string start = ReadStart(file, most);
    const nlohmann::json value = nlohmann::json::parse(start.substr(0, start.find('\n')), nullptr, false);
    return value.is_object() && value.contains("sdp");
}

void ReadJsonLines(const std::string& file, bool remoteAnswers, const TakeItem& take) {
    const Descriptor input(file);
    if (input.number() < 0) {
        take({file, "", false, std::strerror(errno), ""});
        return;
    }
    std::string line;
    std::size_t number = 0;
    bool isTooLong = false;
    const auto end = [&] {
        const std::string name = file + ":" + std::to_string(++number);
        const bool isEmpty = line.find_first_not_of(" \t\r") == std::string::npos && !isTooLong;
        const bool isWanted =
            isEmpty || take(isTooLong ? Surveyed{name, "", false, "it is longer than 16 MiB", ""}
                                      : ItemOf(line, name, remoteAnswers));
        line.clear();
        isTooLong = false;
        return isWanted;
    };
    std::array<char, 65536> block{};
    ssize_t count = 0;
    while ((count = read(input.number(), block.data(), block.size())) > 0) {
        std::string_view bytes(block.data(), static_cast<std::size_t>(count));
        for (std::size_t stop = bytes.find('\n'); stop != std::string_view::npos; stop = bytes.find('\n')) {
            line += bytes.substr(0, stop);
            bytes.remove_prefix(stop + 1);
            if (!end()) {
                return;
            }
        }
        line += bytes;
        if (line.size() > kMostBytes) {
            isTooLong = true;
            line.clear();
        }
    }
    if (!line.empty() || isTooLong) {
        end();
    }
}

} // namespace cmsdp
