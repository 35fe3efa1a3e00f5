// Converts wide strings to UTF-8.

#ifndef ORVEX_WIDE_TO_UTF8_H
#define ORVEX_WIDE_TO_UTF8_H

namespace orvex {

// Writes the code points of source, one for each wchar_t, as NUL-terminated UTF-8. Surrogates are encoded
// like any other code point.
//
// source: NUL-terminated. destination: the buffer, or null to count the bytes only.
// destinationSize: the size of destination in bytes; must be >= 0; its value is unused when destination is
//     null.
// Result: the number of bytes, including the terminator; -1 if source is null or destinationSize is negative;
//     -2 if a code point is above 0x10FFFF, if the end of the buffer would cut a sequence in two, or if the
//     number of bytes does not fit an int.
// A buffer that is too small, but cuts no sequence, is filled without a terminator; the result is the size
// needed.
int convertWideToUtf8(const wchar_t* source, char* destination, int destinationSize);

}  // namespace orvex

#endif
