/* SPDX-License-Identifier: MIT */
/* The library's version: of the headers that a program is compiled with, as macros, and of the
 * library that it runs with, as a function. */
#ifndef ORV_VERSION_H
#define ORV_VERSION_H

#ifndef ORV_API
#define ORV_API __attribute__((visibility("default")))
#endif

#define ORV_VERSION_MAJOR 0
#define ORV_VERSION_MINOR 1
#define ORV_VERSION_PATCH 0

#define ORV_VERSION_TEXT_(a, b, c) #a "." #b "." #c
#define ORV_VERSION_OF_(a, b, c) ORV_VERSION_TEXT_(a, b, c)

/** "MAJOR.MINOR.PATCH" */
#define ORV_VERSION ORV_VERSION_OF_(ORV_VERSION_MAJOR, ORV_VERSION_MINOR, ORV_VERSION_PATCH)

/** The same as one number, for #if: 10203 is 1.2.3. */
#define ORV_VERSION_NUMBER (ORV_VERSION_MAJOR * 10000 + ORV_VERSION_MINOR * 100 + ORV_VERSION_PATCH)

#ifdef __cplusplus
extern "C" {
#endif

/** ORV_VERSION of the library in use. */
ORV_API const char* orv_version(void);

#ifdef __cplusplus
}
#endif

#endif
