// Capabilities as JSON text, every member present.
//
// Tests: tests/tool/CapabilitiesTest.cpp
#include "CapabilitiesFields.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <list>

namespace cmsdp {

namespace {

using nlohmann::ordered_json;

// Writes each member that it visits. See CapabilitiesFields.h for the members.
class Writer {
public:
    explicit Writer(ordered_json& root) : m_object(&root) {}

    void Schema(const char* schema) { (*m_object)["schema"] = schema; }
    void Text(const char* name, const std::string& value) { (*m_object)[name] = value; }
    void Number(const char* name, std::int32_t value) { (*m_object)[name] = value; }
    void Count(const char* name, std::uint32_t value) { (*m_object)[name] = value; }
    void Flag(const char* name, bool value) { (*m_object)[name] = value; }
    void Srtp(const char* name, const Capabilities& c) {
        (*m_object)[name] = c.srtpRequired ? ordered_json("required") : ordered_json(c.srtp);
    }
    void FarEndFlag(const char* name, bool value) {
        if (value) {
            Flag(name, value);
        }
    }
    void Floor(const char* name, FloorControl value) {
        (*m_object)[name] =
            value == FloorControl::kAuto ? ordered_json("auto") : ordered_json(value == FloorControl::kOn);
    }
    void Named(const char* name, std::int32_t value, const NameTable& table) {
        (*m_object)[name] = Value(value, table);
    }
    void CodecSet(const char* name, PayloadType_t set);
    void CodecList(const char* name, const std::list<int>& codecs);
    void Key(const char* name, const Capabilities&, baseSDP::SRTP_M_LINE) { (*m_object)[name] = nullptr; }

    template <typename Members>
    void Object(const char* name, Members members) {
        ordered_json* const outer = m_object;
        ordered_json object = ordered_json::object();
        m_object = &object;
        members();
        m_object = outer;
        (*m_object)[name] = object;
    }

    template <typename Members>
    void FarEnd(const char* name, bool set, Members members) {
        if (set) {
            Object(name, members);
        }
    }

private:
    static ordered_json Value(std::int32_t value, const NameTable& table) {
        for (const NamedValue& row : table) {
            if (row.value == value) {
                return row.name;
            }
        }
        return value;
    }

    ordered_json* m_object;
};

void Writer::CodecSet(const char* name, PayloadType_t set) {
    ordered_json names = ordered_json::array();
    auto left = static_cast<std::uint32_t>(set);
    for (const NamedValue& row : CodecNames()) {
        const auto bit = static_cast<std::uint32_t>(row.value);
        if ((left & bit) != 0) {
            names.push_back(row.name);
            left &= ~bit;
        }
    }
    if (left != 0) {
        names.push_back(static_cast<std::int32_t>(left));
    }
    (*m_object)[name] = names;
}

void Writer::CodecList(const char* name, const std::list<int>& codecs) {
    ordered_json names = ordered_json::array();
    for (const int codec : codecs) {
        names.push_back(Value(codec, CodecNames()));
    }
    (*m_object)[name] = names;
}

} // namespace

std::string CapabilitiesJson(const Capabilities& capabilities) {
    Capabilities visited = capabilities;
    ordered_json root = ordered_json::object();
    Writer writer(root);
    VisitCapabilities(writer, visited);
    return root.dump(2, ' ', true, ordered_json::error_handler_t::replace) + "\n";
}

} // namespace cmsdp
