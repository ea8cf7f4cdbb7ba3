// LocalSDP: the virtual Reset, the codec list, and the dump.
#include "SDP.h"

#include "Expect.h"
#include "Fields.h"
#include "RecordSamples.h"

#include <list>
#include <string>

namespace {

// Counts its resets, to show when dispatch reaches an override.
struct CountingLocal : public LocalSDP {
    int resets = 0;
    void Reset() override { ++resets; }
};

TEST(SDPLocal, ResetIsVirtual) {
    CountingLocal record;
    LocalSDP& asLocal = record;
    samples::Fill(asLocal);
    asLocal.Reset();
    EXPECT_EQ(record.resets, 1);
    samples::ExpectSame(asLocal, samples::Filled<LocalSDP>());
}

TEST(SDPLocal, ConstructionResetsThroughTheLocalRecordNotThroughAnOverride) {
    samples::InDirtyMemory<CountingLocal> record;
    EXPECT_EQ(record->resets, 0);
    samples::ExpectNew<LocalSDP>(*record);
}

TEST(SDPLocal, AssignmentReplacesACodecListByALongerAndByAShorterOne) {
    const std::list<int> lists[] = {{}, {2}, {64, 1}, {16, 64, 1, 8, 1}};
    for (const std::list<int>& before : lists) {
        for (const std::list<int>& list : lists) {
            LocalSDP source;
            source.listAudioCodecPriority = list;
            LocalSDP target;
            target.listAudioCodecPriority = before;
            target = source;
            EXPECT_EQ(target.listAudioCodecPriority, list);
            EXPECT_EQ(source.listAudioCodecPriority, list);
        }
    }
}

TEST(SDPLocal, AssignmentLeavesTheDispatchOfItsTarget) {
    CountingLocal target;
    LocalSDP& asLocal = target;
    asLocal = samples::Filled<LocalSDP>();
    EXPECT_EQ(target.resets, 0);
    const std::string before = support::FieldsText(asLocal);
    asLocal.Reset();
    EXPECT_EQ(target.resets, 1);
    EXPECT_TEXT(support::FieldsText(asLocal), before);
}

TEST(SDPLocal, DumpShowsEveryFieldButTheKeys) {
    EXPECT_TEXT(samples::Filled<LocalSDP>().ToDiag(), samples::kFilledBaseDump + R"(strMyIPAddr: text 143
strOExtension: text 144
strDefaultIPAddr: text 145
iVideoPayloadMode0: 146
iVideoPayloadMode1: 147
fVideoTxMuted: true
listAudioCodecPriority: 149 8 64
)");
}

} // namespace
