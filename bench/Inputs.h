// The texts of bench/inputs, and the endpoint that reads and answers them.
#pragma once

#include <SDPHandler.h>

#include <string>

namespace bench {

/// A text and the letter that names it.
struct Input {
    char letter;
    const char* file;
};
inline constexpr Input kInputs[] = {
    {'a', "a_audio_answer.sdp"},   // 269 B, one section, the answer to an audio call
    {'b', "b_conf_offer.sdp"},     // 1.1 KB, audio and video with keys
    {'c', "c_conf_pres_bfcp.sdp"}, // 1.8 KB, and slides with floor control
    {'d', "d_conf_ice.sdp"},       // 4.6 KB, and 36 ICE candidates
    {'e', "e_12sect_32pt.sdp"},    // 13 KB, 12 sections of 32 payload formats
    {'f', "f_sections.sdp"},       // 1 MB: these two sections, and attribute lines that are generated
};

/// Returns the bytes of one of the texts. Ends the program with a message when they cannot be read.
std::string ReadInput(char letter);

/// The same for any file.
std::string ReadFile(const std::string& path);

/// A video client with everything switched on: four audio codecs, camera and shared screen in both
/// packetization modes, keys for all three streams, one megabit.
LocalSDP Capabilities();

/// Gives a handler the capabilities and switches SRTP and floor control on.
void Begin(SDPHandler& handler, const LocalSDP& local);

} // namespace bench
