// What a shared library of this project shows to others.
//
//     class COMMONMEDIA_EXPORT Record { ... };             every operation of the class is exported
//     COMMONMEDIA_EXPORT void Operation();                 this operation is exported
//     struct COMMONMEDIA_LOCAL Part;                       nothing of a nested type is
//
// The libraries are compiled with hidden visibility, so whatever has no mark stays inside. In a static
// library and with the plain compiler call the marks change nothing that a program could see.
#pragma once

#if defined(_WIN32)
// COMMONMEDIA_DLL is defined while a DLL is compiled. Whoever uses the DLL needs no mark: the import library
// resolves the functions, and no data is exported.
#if defined(COMMONMEDIA_DLL)
#define COMMONMEDIA_EXPORT __declspec(dllexport)
#else
#define COMMONMEDIA_EXPORT
#endif
#define COMMONMEDIA_LOCAL
#elif defined(__GNUC__)
#define COMMONMEDIA_EXPORT __attribute__((visibility("default")))
#define COMMONMEDIA_LOCAL __attribute__((visibility("hidden")))
#else
#define COMMONMEDIA_EXPORT
#define COMMONMEDIA_LOCAL
#endif
