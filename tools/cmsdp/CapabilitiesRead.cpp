// Capabilities from JSON text. Nothing is guessed: what a field cannot hold is an error with its path.
//
// Tests: tests/tool/CapabilitiesTest.cpp
#include "CapabilitiesFields.h"
#include "Keys.h"
#include "Outcome.h"
#include "StrictJson.h"
#include "Words.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <list>

namespace cmsdp {

namespace {

using nlohmann::json;

// A value as a message names it. A long text is told by its length alone: it may be a key.
std::string InWords(const json& value) {
    constexpr std::size_t most = 24;
    switch (value.type()) {
    case json::value_t::object:
        return "an object";
    case json::value_t::array:
        return "an array";
    case json::value_t::string: {
        const auto& text = value.get_ref<const std::string&>();
        return text.size() <= most ? "the text " + Quoted(text)
                                   : "a text of " + std::to_string(text.size()) + " bytes";
    }
    case json::value_t::null:
        return "null";
    case json::value_t::boolean:
        return value.get<bool>() ? "true" : "false";
    default:
        return "the number " + value.dump();
    }
}

std::string NamesIn(const NameTable& table) {
    std::vector<std::string> names;
    names.reserve(table.size());
    for (const NamedValue& row : table) {
        names.push_back('"' + std::string(row.name) + '"');
    }
    return Listed(names, names.size());
}

// Takes each member that it visits out of the JSON value. See CapabilitiesFields.h for the members.
class Reader {
public:
    Reader(const json& root, std::string file) : m_file(std::move(file)), m_object(&root) { AskForObject(); }

    void Schema(const char* schema);
    void Text(const char* name, std::string& value);
    void Number(const char* name, std::int32_t& value);
    void Count(const char* name, std::uint32_t& value);
    void Flag(const char* name, bool& value);
    void FarEndFlag(const char* name, bool& value) { Flag(name, value); }
    void Srtp(const char* name, Capabilities& c);
    void Floor(const char* name, FloorControl& value);
    template <typename Enum>
    void Named(const char* name, Enum& value, const NameTable& table) {
        if (const json* found = Take(name)) {
            value = static_cast<Enum>(NamedNumber(*found, MemberPath(m_path, name), table));
        }
    }
    void CodecSet(const char* name, PayloadType_t& set);
    void CodecList(const char* name, std::list<int>& codecs);
    void Key(const char* name, Capabilities& c, baseSDP::SRTP_M_LINE stream);

    template <typename Members>
    void Object(const char* name, Members members) {
        const json* const found = Take(name);
        if (found == nullptr) {
            return;
        }
        Reader inner(*found, MemberPath(m_path, name), *this);
        std::swap(*this, inner);
        members();
        RefuseTheRest();
        std::swap(*this, inner);
    }

    template <typename Members>
    void FarEnd(const char* name, bool /*set*/, Members members) {
        Object(name, members);
    }

    // Ends an object: a member that nobody asked for is an error.
    void RefuseTheRest() const;

private:
    Reader(const json& object, std::string path, const Reader& outer)
        : m_file(outer.m_file), m_path(std::move(path)), m_object(&object) {
        AskForObject();
    }

    [[noreturn]] void Fail(const std::string& path, const std::string& expected, const std::string& found,
                           const std::string& mend) const {
        throw ToolError(kLocalFile,
                        m_file + ": " + path + ": expected " + expected + ", found " + found + "; " + mend);
    }
    void AskForObject() const;
    const json* Take(const char* name);
    const json* TakeArray(const char* name);
    std::int32_t WholeNumber(const json& value, const std::string& path) const;
    std::int32_t NamedNumber(const json& value, const std::string& path, const NameTable& table) const;

    std::string m_file;
    std::string m_path = "$";
    const json* m_object;
    std::vector<std::string> m_known;
};

void Reader::AskForObject() const {
    if (!m_object->is_object()) {
        Fail(m_path, "an object", InWords(*m_object),
             "see cmsdp capabilities for the members of this object");
    }
}

const json* Reader::Take(const char* name) {
    m_known.emplace_back(name);
    const auto member = m_object->find(name);
    return member == m_object->end() ? nullptr : &*member;
}

const json* Reader::TakeArray(const char* name) {
    const json* const found = Take(name);
    if (found != nullptr && !found->is_array()) {
        Fail(MemberPath(m_path, name), "an array of codecs", InWords(*found),
             "write names in brackets, or [] for none");
    }
    return found;
}

std::int32_t Reader::WholeNumber(const json& value, const std::string& path) const {
    using Limits = std::numeric_limits<std::int32_t>;
    const bool fits = value.is_number_unsigned()
                          ? value.get<std::uint64_t>() <= static_cast<std::uint64_t>(Limits::max())
                          : value.is_number_integer() && value.get<std::int64_t>() >= Limits::min();
    if (!fits) {
        Fail(path, "a whole number from -2147483648 to 2147483647", InWords(value),
             "write it in digits, without quotes, point or exponent");
    }
    return value.get<std::int32_t>();
}

std::int32_t Reader::NamedNumber(const json& value, const std::string& path, const NameTable& table) const {
    if (value.is_number()) {
        return WholeNumber(value, path);
    }
    if (value.is_string()) {
        for (const NamedValue& row : table) {
            if (value == row.name) {
                return row.value;
            }
        }
    }
    Fail(path, "one of " + NamesIn(table), InWords(value), "names are compared letter for letter");
}

void Reader::Schema(const char* schema) {
    const json* const found = Take("schema");
    if (found != nullptr && *found != schema) {
        Fail(MemberPath(m_path, "schema"), '"' + std::string(schema) + '"', InWords(*found),
             "start from cmsdp capabilities");
    }
}

void Reader::Text(const char* name, std::string& value) {
    if (const json* found = Take(name)) {
        if (!found->is_string()) {
            Fail(MemberPath(m_path, name), "a text", InWords(*found), "write it in double quotes");
        }
        value = found->get<std::string>();
    }
}

void Reader::Number(const char* name, std::int32_t& value) {
    if (const json* found = Take(name)) {
        value = WholeNumber(*found, MemberPath(m_path, name));
    }
}

void Reader::Count(const char* name, std::uint32_t& value) {
    if (const json* found = Take(name)) {
        constexpr std::uint64_t highest = std::numeric_limits<std::uint32_t>::max();
        if (!found->is_number_unsigned() || found->get<std::uint64_t>() > highest) {
            Fail(MemberPath(m_path, name), "a whole number from 0 to 4294967295", InWords(*found),
                 "0 serves none");
        }
        value = found->get<std::uint32_t>();
    }
}

void Reader::Srtp(const char* name, Capabilities& c) {
    if (const json* found = Take(name)) {
        if (!found->is_boolean() && *found != "required") {
            Fail(MemberPath(m_path, name), "true, false or \"required\"", InWords(*found),
                 "\"required\" takes no plain stream");
        }
        c.srtpRequired = !found->is_boolean();
        c.srtp = c.srtpRequired || found->get<bool>();
    }
}

void Reader::Floor(const char* name, FloorControl& value) {
    if (const json* found = Take(name)) {
        if (!found->is_boolean() && *found != "auto") {
            Fail(MemberPath(m_path, name), "true, false or \"auto\"", InWords(*found),
                 "\"auto\" answers with floor control only offers that have it");
        }
        value = !found->is_boolean() ? FloorControl::kAuto
                : found->get<bool>() ? FloorControl::kOn
                                     : FloorControl::kOff;
    }
}

void Reader::Flag(const char* name, bool& value) {
    if (const json* found = Take(name)) {
        if (!found->is_boolean()) {
            Fail(MemberPath(m_path, name), "true or false", InWords(*found), "write it without quotes");
        }
        value = found->get<bool>();
    }
}

void Reader::CodecSet(const char* name, PayloadType_t& set) {
    const json* const found = TakeArray(name);
    if (found == nullptr) {
        return;
    }
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < found->size(); ++i) {
        const std::string path = ElementPath(MemberPath(m_path, name), i);
        bits |= static_cast<std::uint32_t>(NamedNumber((*found)[i], path, CodecNames()));
    }
    set = static_cast<PayloadType_t>(static_cast<std::int32_t>(bits));
}

void Reader::CodecList(const char* name, std::list<int>& codecs) {
    const json* const found = TakeArray(name);
    if (found == nullptr) {
        return;
    }
    codecs.clear();
    for (std::size_t i = 0; i < found->size(); ++i) {
        const std::string path = ElementPath(MemberPath(m_path, name), i);
        codecs.push_back(NamedNumber((*found)[i], path, CodecNames()));
    }
}

void Reader::Key(const char* name, Capabilities& c, baseSDP::SRTP_M_LINE stream) {
    const json* const found = Take(name);
    if (found == nullptr || found->is_null()) {
        return;
    }
    if (!found->is_string() || !SetInlineKey(c.local, stream, found->get_ref<const std::string&>())) {
        const std::string what =
            found->is_string()
                ? "a text of " + std::to_string(found->get_ref<const std::string&>().size()) + " bytes"
                : InWords(*found);
        Fail(MemberPath(m_path, name), "null or the 40 base64 characters of a key and a salt", what,
             "leave it null and a key is made");
    }
    c.keyGiven[stream] = true;
}

void Reader::RefuseTheRest() const {
    for (const auto& member : m_object->items()) {
        if (std::find(m_known.begin(), m_known.end(), member.key()) == m_known.end()) {
            Fail(MemberPath(m_path, member.key()), "one of " + Listed(m_known, m_known.size()),
                 "an unknown member", "remove it or correct its name");
        }
    }
}

} // namespace

Capabilities ParseCapabilities(const std::string& json, const std::string& name, const Capabilities& base) {
    const nlohmann::json root = ParseStrictJson(json, name);
    Capabilities c = base;
    Reader reader(root, name);
    VisitCapabilities(reader, c);
    reader.RefuseTheRest();
    return c;
}

} // namespace cmsdp
