// From Apple's open-source Libm (Source/Intel/math.h, of which arm64 has the same declarations).
#pragma once

#include <sys/cdefs.h>

typedef float float_t;
typedef double double_t;

#define HUGE_VAL __builtin_huge_val()
#define HUGE_VALF __builtin_huge_valf()
#define HUGE_VALL __builtin_huge_vall()
#define INFINITY __builtin_inff()
#define NAN __builtin_nanf("")

#define M_E 2.71828182845904523536028747135266250
#define M_PI 3.14159265358979323846264338327950288
#define M_PI_2 1.57079632679489661923132169163975144
#define M_PI_4 0.785398163397448309615660845819875721
#define M_SQRT2 1.41421356237309504880168872420969808

#define FP_NAN 1
#define FP_INFINITE 2
#define FP_ZERO 3
#define FP_NORMAL 4
#define FP_SUBNORMAL 5
#define FP_ILOGB0 (-2147483647 - 1)
#define FP_ILOGBNAN (-2147483647 - 1)

#define fpclassify(x) __builtin_fpclassify(FP_NAN, FP_INFINITE, FP_NORMAL, FP_SUBNORMAL, FP_ZERO, x)
#define isfinite(x) __builtin_isfinite(x)
#define isinf(x) __builtin_isinf(x)
#define isnan(x) __builtin_isnan(x)
#define isnormal(x) __builtin_isnormal(x)
#define signbit(x) __builtin_signbit(x)

// One function of each width.
#define _OF_ONE(name)     \
    double name(double);  \
    float name##f(float); \
    long double name##l(long double);
#define _OF_TWO(name)            \
    double name(double, double); \
    float name##f(float, float); \
    long double name##l(long double, long double);

__BEGIN_DECLS
_OF_ONE(acos)
_OF_ONE(acosh)
_OF_ONE(asin)
_OF_ONE(asinh)
_OF_ONE(atan)
_OF_ONE(atanh)
_OF_ONE(cbrt)
_OF_ONE(ceil)
_OF_ONE(cos)
_OF_ONE(cosh)
_OF_ONE(erf)
_OF_ONE(erfc)
_OF_ONE(exp)
_OF_ONE(exp2)
_OF_ONE(expm1)
_OF_ONE(fabs)
_OF_ONE(floor)
_OF_ONE(lgamma)
_OF_ONE(log)
_OF_ONE(log10)
_OF_ONE(log1p)
_OF_ONE(log2)
_OF_ONE(logb)
_OF_ONE(nearbyint)
_OF_ONE(rint)
_OF_ONE(round)
_OF_ONE(sin)
_OF_ONE(sinh)
_OF_ONE(sqrt)
_OF_ONE(tan)
_OF_ONE(tanh)
_OF_ONE(tgamma)
_OF_ONE(trunc)
_OF_TWO(atan2)
_OF_TWO(copysign)
_OF_TWO(fdim)
_OF_TWO(fmax)
_OF_TWO(fmin)
_OF_TWO(fmod)
_OF_TWO(hypot)
_OF_TWO(nextafter)
_OF_TWO(pow)
_OF_TWO(remainder)

double fma(double, double, double);
float fmaf(float, float, float);
long double fmal(long double, long double, long double);
double frexp(double, int*);
float frexpf(float, int*);
long double frexpl(long double, int*);
int ilogb(double);
int ilogbf(float);
int ilogbl(long double);
double ldexp(double, int);
float ldexpf(float, int);
long double ldexpl(long double, int);
long lrint(double);
long lrintf(float);
long lrintl(long double);
long long llrint(double);
long long llrintf(float);
long long llrintl(long double);
long lround(double);
long lroundf(float);
long lroundl(long double);
long long llround(double);
long long llroundf(float);
long long llroundl(long double);
double modf(double, double*);
float modff(float, float*);
long double modfl(long double, long double*);
double nan(const char*);
float nanf(const char*);
long double nanl(const char*);
double nexttoward(double, long double);
float nexttowardf(float, long double);
long double nexttowardl(long double, long double);
double remquo(double, double, int*);
float remquof(float, float, int*);
long double remquol(long double, long double, int*);
double scalbln(double, long);
float scalblnf(float, long);
long double scalblnl(long double, long);
double scalbn(double, int);
float scalbnf(float, int);
long double scalbnl(long double, int);
__END_DECLS

#undef _OF_ONE
#undef _OF_TWO
