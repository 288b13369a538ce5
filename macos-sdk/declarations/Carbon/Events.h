#pragma once

// Public documentation (Events.h): a key's place on the keyboard, named for the letter that an American one
// has there.
enum {
    kVK_ANSI_A = 0x00,
    kVK_ANSI_B = 0x0B,
    kVK_ANSI_C = 0x08,
    kVK_ANSI_D = 0x02,
    kVK_ANSI_E = 0x0E,
    kVK_ANSI_F = 0x03,
    kVK_ANSI_G = 0x05,
    kVK_ANSI_H = 0x04,
    kVK_ANSI_I = 0x22,
    kVK_ANSI_J = 0x26,
    kVK_ANSI_K = 0x28,
    kVK_ANSI_L = 0x25,
    kVK_ANSI_M = 0x2E,
    kVK_ANSI_N = 0x2D,
    kVK_ANSI_O = 0x1F,
    kVK_ANSI_P = 0x23,
    kVK_ANSI_Q = 0x0C,
    kVK_ANSI_R = 0x0F,
    kVK_ANSI_S = 0x01,
    kVK_ANSI_T = 0x11,
    kVK_ANSI_U = 0x20,
    kVK_ANSI_V = 0x09,
    kVK_ANSI_W = 0x0D,
    kVK_ANSI_X = 0x07,
    kVK_ANSI_Y = 0x10,
    kVK_ANSI_Z = 0x06,
};

// Public documentation (Events.h): the bits of modifiers.
enum { cmdKey = 1 << 8, optionKey = 1 << 11 };
