// Types of the Objective-C runtime. From: Apple's open-source objc4, objc.h and runtime.h.
#pragma once

#include <stddef.h>
#include <stdint.h>

typedef struct objc_class* Class;
typedef struct objc_selector* SEL;
#ifndef __OBJC__
typedef struct objc_object* id;
#endif

// `bool` on arm64.
typedef bool BOOL;

// Null pointers for objects and classes; the compiler's own words for the two values of a BOOL.
#define nil nullptr
#define Nil nullptr
#if defined(__OBJC__)
#define YES __objc_yes
#define NO __objc_no
#else
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#endif
