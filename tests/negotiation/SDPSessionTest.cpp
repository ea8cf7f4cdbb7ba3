#include "SDPSession.h"
#include "Call.h"

#include <initializer_list>

using namespace call;
using namespace negotiation;

namespace {

/// What differs is not equal, and neither is it the other way round; the value itself is equal to its copy.
template <typename Value>
void ExpectEachDiffers(const Value& value, std::initializer_list<void (*)(Value&)> changes) {
    EXPECT_TRUE(value == Value(value));
    int number = 0;
    for (const auto change : changes) {
        Value other = value;
        change(other);
        EXPECT_FALSE(value == other) << "change " << number;
        EXPECT_FALSE(other == value) << "change " << number;
        ++number;
    }
}

TEST(Session, WishesDifferInEachFieldThatIsWritten) {
    Wishes wishes;
    wishes.local = Local();
    ExpectEachDiffers<Wishes>(wishes,
                              {
                                  [](Wishes& each) { each.local.eAudioCodec = PAYLOAD_G722; },
                                  [](Wishes& each) { each.local.iAudioRTPPort = 1; },
                                  [](Wishes& each) { each.local.iVideoPresoControlPort = 1; },
                                  [](Wishes& each) { each.local.iMaxBandwidth = 1; },
                                  [](Wishes& each) { each.local.cryptoAlgo[kSlides] = kBothSuites[1]; },
                                  [](Wishes& each) { each.local.strMyIPAddr = "192.0.2.9"; },
                                  [](Wishes& each) { each.local.strOExtension = "x"; },
                                  [](Wishes& each) { each.local.strDefaultIPAddr = "192.0.2.9"; },
                                  [](Wishes& each) { each.local.iVideoPayloadMode0 = 99; },
                                  [](Wishes& each) { each.local.iVideoPayloadMode1 = 99; },
                                  [](Wishes& each) { each.local.fVideoTxMuted = true; },
                                  [](Wishes& each) { each.local.listAudioCodecPriority.reverse(); },
                                  [](Wishes& each) { each.local.m_VideoMain.iFmtpMaxMbps = 1; },
                                  [](Wishes& each) { each.local.m_VideoMain.strVideoLevel = "4"; },
                                  [](Wishes& each) { each.local.m_VideoPreso.iFmtpMaxFrameSize = 1; },
                                  [](Wishes& each) { each.local.m_VideoPreso.iVideoRTPPort = 1; },
                                  [](Wishes& each) { each.keys[kMain][1].salt[13] = 1; },
                                  [](Wishes& each) { each.srtp = Srtp::Wanted; },
                                  [](Wishes& each) { each.isHeld = true; },
                                  [](Wishes& each) { each.isPresenting = true; },
                                  [](Wishes& each) { each.asked = 1; },
                              });
}

TEST(Session, SlotsDifferInEachField) {
    Slot slot;
    slot.bound = std::make_shared<const Bound>(Bound{});
    ExpectEachDiffers<Slot>(slot, {
                                      [](Slot& each) { each.media = "audio"; },
                                      [](Slot& each) { each.transport = "RTP/AVP"; },
                                      [](Slot& each) { each.formats = "0"; },
                                      [](Slot& each) { each.role = kAudio; },
                                      [](Slot& each) { each.isOpen = true; },
                                      [](Slot& each) { each.isParked = true; },
                                      [](Slot& each) { each.numbers[kG722] = 9; },
                                      [](Slot& each) { each.bound = nullptr; },
                                      [](Slot& each) {
                                          Bound bound{};
                                          bound[97] = kMode1;
                                          each.bound = std::make_shared<const Bound>(bound);
                                      },
                                      [](Slot& each) { each.profile = "42e0"; },
                                      [](Slot& each) { each.ours.send = true; },
                                      [](Slot& each) { each.theirs.receive = true; },
                                      [](Slot& each) { each.isHeldByUs = true; },
                                      [](Slot& each) { each.isHeldByThem = true; },
                                      [](Slot& each) { each.content = "main"; },
                                      [](Slot& each) { each.label = "1"; },
                                      [](Slot& each) { each.floor = "1"; },
                                      [](Slot& each) { each.conferenceId = "1"; },
                                      [](Slot& each) { each.userId = "1"; },
                                      [](Slot& each) { each.floorRole = SDPNegotiator::FloorRole::Client; },
                                  });
    Slot sameMeanings = slot;
    sameMeanings.bound = std::make_shared<const Bound>(*slot.bound);
    EXPECT_TRUE(slot == sameMeanings);
}

TEST(Session, SessionsDifferInSlotsStreamsAndTimes) {
    Session session;
    session.slots.resize(1);
    session.streams.resize(1);
    ExpectEachDiffers<negotiation::Session>(
        session, {
                     [](negotiation::Session& each) { each.slots.clear(); },
                     [](negotiation::Session& each) { each.slots[0].isOpen = true; },
                     [](negotiation::Session& each) { each.streams.clear(); },
                     [](negotiation::Session& each) { each.streams[0].port = 1; },
                     [](negotiation::Session& each) { each.time = "t=1 2\r\n"; },
                     [](negotiation::Session& each) { each.isSecured[kMain] = true; },
                 });
}

TEST(Session, ASlotIsFoundByItsRole) {
    negotiation::Session session;
    session.slots.resize(3);
    session.slots[1].role = kAudio;
    session.slots[2].role = kAudio;
    EXPECT_EQ(session.Open(kAudio), 3U);
    EXPECT_EQ(session.Last(kAudio), 1U);
    EXPECT_FALSE(session.GoesOn(kAudio));
    session.slots[2].isParked = true;
    EXPECT_EQ(session.Open(kAudio), 3U);
    EXPECT_EQ(session.Last(kAudio), 2U);
    EXPECT_TRUE(session.GoesOn(kAudio));
    session.slots[2].isParked = false;
    session.slots[2].isOpen = true;
    EXPECT_EQ(session.Open(kAudio), 2U);
    EXPECT_EQ(session.Last(kAudio), 2U);
    EXPECT_EQ(session.Open(kMain), 3U);
    EXPECT_EQ(session.Last(kMain), 3U);
    EXPECT_FALSE(session.GoesOn(kMain));
}

TEST(Session, ARoleIsServedWithACodecAndAPort) {
    Wishes wishes;
    wishes.local = Local();
    for (const Role role : {kAudio, kMain, kSlides, kFloor}) {
        EXPECT_TRUE(wishes.CanServe(role)) << int{role};
    }
    wishes.local.m_VideoPreso.iVideoRTPPort = 0;
    EXPECT_FALSE(wishes.CanServe(kSlides));
    EXPECT_FALSE(wishes.CanServe(kFloor));
    wishes.local.eAudioCodec = PAYLOAD_UNKNOWN;
    EXPECT_FALSE(wishes.CanServe(kAudio));
    wishes.local.m_VideoMain.eVideoCodec = PAYLOAD_UNKNOWN;
    EXPECT_FALSE(wishes.CanServe(kMain));
}

} // namespace
