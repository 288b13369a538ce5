#pragma once

// Public documentation (Core Graphics, CGGeometry): coordinates are doubles in 64-bit programs.
typedef double CGFloat;

// Public documentation (Core Graphics, CGGeometry).
struct CGPoint {
    CGFloat x;
    CGFloat y;
};
typedef struct CGPoint CGPoint;

// Public documentation (Core Graphics, CGGeometry).
struct CGSize {
    CGFloat width;
    CGFloat height;
};
typedef struct CGSize CGSize;

// Public documentation (Core Graphics, CGGeometry).
struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef struct CGRect CGRect;
