// Journal: what the agent did, with the time of each event, on standard output; and the descriptions of the
// call as files "01-sent-offer.sdp". The descriptions hold the keys of the call, the lines never do.
#pragma once

#include <string>
#include <string_view>

namespace call {

class Journal {
public:
    explicit Journal(std::string directory) : m_directory(std::move(directory)) {}

    /// A line: seconds since 1970 with milliseconds, then the event.
    void Note(const std::string& event) const;
    /// Keeps a description.
    /// @param kind  "sent-offer", "received-answer"
    void Keep(const char* kind, std::string_view description);
    const std::string& Directory() const { return m_directory; }

private:
    std::string m_directory;
    int m_kept = 0;
};

} // namespace call
