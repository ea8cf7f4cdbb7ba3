// The trace sink: none at first, the installed one gets each finished text with its place, none afterwards.
#include "CommonMediaTrace.h"

#include "Expect.h"

#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#ifdef __GLIBC__
#include <printf.h>
#endif

namespace {

struct Record {
    std::string file;
    std::string function;
    int line;
    std::string text;
};
using Records = std::vector<Record>;
using Texts = std::vector<std::string>;

void Keep(void* context, const char* file, const char* function, int line, const char* text) {
    static_cast<Records*>(context)->push_back({file, function, line, text});
}

// Every test removes its sink, also when it fails.
class CommonMediaTraceSeam : public ::testing::Test {
protected:
    ~CommonMediaTraceSeam() override { SetCommonMediaTraceSink(nullptr); }

    Texts Traced() const {
        Texts texts;
        for (const Record& record : m_records) {
            texts.push_back(record.text);
        }
        return texts;
    }

    Records m_records;
    CommonMediaTraceSink m_sink = {Keep, &m_records};
};

TEST_F(CommonMediaTraceSeam, NoSinkIsInstalledAtFirst) {
    EXPECT_FALSE(CommonMediaTraceEnabled());
    CommonMediaTrace("a.cpp", "F", 1, "%s", "nobody hears this");
    EXPECT_TRUE(m_records.empty());
}

TEST_F(CommonMediaTraceSeam, InstalledSinkGetsTheTextAndItsPlace) {
    SetCommonMediaTraceSink(&m_sink);
    EXPECT_TRUE(CommonMediaTraceEnabled());
    CommonMediaTrace("a.cpp", "GetRTPData", 42, "Dump Media Session: \n%s", "iPort: 5000\n");
    ASSERT_EQ(m_records.size(), 1U);
    EXPECT_EQ(m_records[0].file, "a.cpp");
    EXPECT_EQ(m_records[0].function, "GetRTPData");
    EXPECT_EQ(m_records[0].line, 42);
    EXPECT_TEXT(m_records[0].text, "Dump Media Session: \niPort: 5000\n");
}

TEST_F(CommonMediaTraceSeam, FormatsLikePrintf) {
    SetCommonMediaTraceSink(&m_sink);
    CommonMediaTrace("a.cpp", "F", 1, "%d|%5u|%-4s|%c|%%|%ld|%x", -7, 8U, "ab", 'z', 9L, 255U);
    CommonMediaTrace("a.cpp", "F", 2, "plain");
    EXPECT_EQ(Traced(), (Texts{"-7|    8|ab  |z|%|9|ff", "plain"}));
}

TEST_F(CommonMediaTraceSeam, TextThatCannotBeFormattedIsDropped) {
    SetCommonMediaTraceSink(&m_sink);
    // The C locale has no bytes for this character.
    CommonMediaTrace("a.cpp", "F", 1, "before %lc", wint_t{0x20ac});
    CommonMediaTrace("a.cpp", "F", 2, "later");
    EXPECT_EQ(Traced(), Texts{"later"});
}

TEST_F(CommonMediaTraceSeam, TextsOfEveryLengthReachTheSinkWhole) {
    SetCommonMediaTraceSink(&m_sink);
    for (const std::size_t length :
         {0U, 1U, 14U, 15U, 16U, 255U, 256U, 1021U, 1022U, 1023U, 1024U, 1025U, 4096U, 5000U, 100000U}) {
        m_records.clear();
        const std::string text = length == 0 ? "" : std::string(length - 1, 'x') + 'y';
        CommonMediaTrace("a.cpp", "F", 1, "%s", text.c_str());
        CommonMediaTrace("a.cpp", "F", 2, "%s!", text.c_str());
        EXPECT_EQ(Traced(), (Texts{text, text + "!"})) << length;
    }
}

TEST_F(CommonMediaTraceSeam, KeyTextIsMaskedInTheFinishedText) {
    SetCommonMediaTraceSink(&m_sink);
    CommonMediaTrace("a.cpp", "F", 1, "a=crypto:1 X inline:%s|2^31 KDR=%d and %s:%s", "c2VjcmV0", 1, "Inline",
                     "YQ");
    CommonMediaTrace("a.cpp", "F", 2, "online:%s", "c2hvd24");
    EXPECT_EQ(Traced(), (Texts{"a=crypto:1 X inline:*** KDR=1 and Inline:***", "online:c2hvd24"}));
}

TEST_F(CommonMediaTraceSeam, KeyTextIsMaskedInALongTextAsWell) {
    SetCommonMediaTraceSink(&m_sink);
    for (const std::size_t length : {1000U, 65536U, 1048576U}) {
        m_records.clear();
        const std::string filler(length, 'x');
        CommonMediaTrace("a.cpp", "F", 1, "inline:c2VjcmV0 %s inline:%s", filler.c_str(), "bW9yZQ");
        ASSERT_EQ(m_records.size(), 1U);
        EXPECT_TRUE(m_records[0].text == "inline:*** " + filler + " inline:***") << length;
    }
}

TEST_F(CommonMediaTraceSeam, RemovedSinkGetsNothingMore) {
    SetCommonMediaTraceSink(&m_sink);
    CommonMediaTrace("a.cpp", "F", 1, "heard");
    SetCommonMediaTraceSink(nullptr);
    EXPECT_FALSE(CommonMediaTraceEnabled());
    CommonMediaTrace("a.cpp", "F", 2, "not heard");
    EXPECT_EQ(Traced(), Texts{"heard"});
}

TEST_F(CommonMediaTraceSeam, NewSinkReplacesTheOldOne) {
    Records others;
    const CommonMediaTraceSink other = {Keep, &others};
    SetCommonMediaTraceSink(&m_sink);
    SetCommonMediaTraceSink(&other);
    CommonMediaTrace("b.cpp", "G", 3, "to the second");
    EXPECT_TRUE(m_records.empty());
    ASSERT_EQ(others.size(), 1U);
    EXPECT_EQ(others[0].file, "b.cpp");
}

#ifdef __GLIBC__
const CommonMediaTraceSink* g_next = nullptr;

/// Writes "swapped" for the specifier %W, and installs the next sink meanwhile.
int WriteAndSwap(FILE* stream, const printf_info*, const void* const*) {
    SetCommonMediaTraceSink(g_next);
    return std::fputs("swapped", stream) < 0 ? -1 : 7;
}

int CountArguments(const printf_info*, std::size_t, int*, int*) {
    return 0;
}

// A trace that loaded the sink twice would call a null pointer, or one sink's function with the other's
// context.
TEST_F(CommonMediaTraceSeam, SinkOfATraceIsTheOneAtItsStart) {
    ASSERT_EQ(register_printf_specifier('W', WriteAndSwap, CountArguments), 0);
    // The compiler knows no %W.
    void (*const trace)(const char*, const char*, int, const char*, ...) = CommonMediaTrace;
    Records others;
    const CommonMediaTraceSink other = {[](void* context, const char*, const char*, int, const char* text) {
                                            static_cast<Records*>(context)->push_back({"other", "", 0, text});
                                        },
                                        &others};
    for (const CommonMediaTraceSink* const next :
         {&other, static_cast<const CommonMediaTraceSink*>(nullptr)}) {
        m_records.clear();
        g_next = next;
        SetCommonMediaTraceSink(&m_sink);
        trace("a.cpp", "F", 1, "%W");
        ASSERT_EQ(m_records.size(), 1U);
        EXPECT_TEXT(m_records[0].text, "swapped");
        EXPECT_TRUE(others.empty());
    }
    g_next = &other;
    SetCommonMediaTraceSink(nullptr);
    trace("a.cpp", "F", 1, "%W");
    EXPECT_TRUE(others.empty());
    ASSERT_EQ(register_printf_specifier('W', nullptr, nullptr), 0);
}
#endif

} // namespace
