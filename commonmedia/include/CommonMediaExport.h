// What a shared library of this project shows to others, and the standard that its public headers need.
//
//     class COMMONMEDIA_EXPORT Record { ... };             every operation of the class is exported
//     COMMONMEDIA_EXPORT void Operation();                 this operation is exported
//     struct COMMONMEDIA_LOCAL Part;                       nothing of a nested type is
//
// The libraries are compiled with hidden visibility, so whatever has no mark stays inside. In a static
// library and with the plain compiler call the marks change nothing that a program could see.
#pragma once

#if (defined(_MSVC_LANG) ? _MSVC_LANG : __cplusplus) < 201703L
#error "commonmedia needs C++17 or later"
#endif

#if defined(_WIN32) && defined(COMMONMEDIA_DLL)
// Defined while the DLL itself is compiled. Programs that use it need no mark: it exports functions alone,
// and the import library resolves them.
#define COMMONMEDIA_EXPORT __declspec(dllexport)
#define COMMONMEDIA_LOCAL
#elif defined(__GNUC__) && !defined(_WIN32)
#define COMMONMEDIA_EXPORT __attribute__((visibility("default")))
#define COMMONMEDIA_LOCAL __attribute__((visibility("hidden")))
#else
#define COMMONMEDIA_EXPORT
#define COMMONMEDIA_LOCAL
#endif
