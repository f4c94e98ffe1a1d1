#pragma once
// Base64 of the standard RFC 4648 alphabet, without line breaks, for the binary parts of
// the messages exchanged with the filter service. Neither direction fails to its caller:
// a bad input gives a partly filled output, and the message classes go on with it.

#include "foundation/ByteArray.h"

#include <cstdint>

// The encoded length of `n` bytes: whole groups of four characters.
std::uint32_t Base64Size(std::uint32_t n);
// The room that decoding `n` characters needs: n / 4 * 3.
std::uint32_t Base64DecodedSize(std::uint32_t n);

// Replaces `output` with the encoding of `input`, the last group padded with '='.
void Base64Encode(const ByteArray& input, ByteArray& output);

// Decodes `input` into `output`. A leading "+ " is skipped, and a carriage return ends the
// text. An input that starts with a carriage return leaves `output` untouched. On a byte
// outside the alphabet decoding stops at once: `output` then keeps the size that the whole
// input would need, with the groups decoded so far at its start.
void Base64Decode(const ByteArray& input, ByteArray& output);
