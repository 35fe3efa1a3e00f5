// Conversion of wide strings to UTF-8.

#ifndef ORVEX_WIDE_TO_UTF8_H
#define ORVEX_WIDE_TO_UTF8_H

namespace orvex {

// Writes the code points of source, each wchar_t being one, as UTF-8 with a terminating zero.
// Surrogates are encoded like any other code point.
//
// source: zero-terminated. destination: where the bytes go, or null to count them only.
// destinationSize: the size of destination in bytes, not negative;
//     otherwise ignored when destination is null.
// Result: the number of bytes, the terminating zero included; -1 when source is null or
//     destinationSize is negative; -2 when a code point lies above 0x10FFFF, when the end of the
//     buffer would cut a sequence in two, or when the number of bytes does not fit an int.
// A buffer that is too small without cutting a sequence is filled without a terminating zero, and the
// result is the size needed.
int convertWideToUtf8(const wchar_t* source, char* destination, int destinationSize);

}  // namespace orvex

#endif
