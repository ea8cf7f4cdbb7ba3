// Every public header includes this one: older standards fail here, with one message that says why.
#pragma once

#if (defined(_MSVC_LANG) ? _MSVC_LANG : __cplusplus) < 201703L
#error "commonmedia needs C++17 or later"
#endif
