#pragma once

#include "common/Encode.h"

#include <cstddef>
#include <cstdint>

/// The two ways through Base64 text: base64_decode_run() picks one when the process starts. Both
/// follow the same stopping rules; the plain one runs on every processor.
namespace ca::base64 {

/// A position in Base64 text and in the octets it decodes to.
///
/// Between two calls the octets written are three quarters of the alphabet characters passed, so a
/// whole step of n characters may always store 3 * n / 4 octets into a buffer of the size that
/// base64_decode() asks for.
class Cursor {
  public:
    Cursor(const char* in, std::size_t length, unsigned char* out)
        : m_in(in), m_end(in + length), m_out(out), m_begin(in), m_outBegin(out) {}

    std::size_t Left() const { return static_cast<std::size_t>(m_end - m_in); }
    const char* In() const { return m_in; }
    unsigned char* Out() const { return m_out; }

    /// Passes `chars` characters, a multiple of four, whose octets were stored at Out().
    void Advance(std::size_t chars) {
        m_in += chars;
        m_out += chars / 4 * 3;
    }

    /// Passes CR and LF; false when there was none.
    bool SkipLineBreaks() {
        const char* const before = m_in;
        while (m_in != m_end && (*m_in == '\r' || *m_in == '\n')) {
            ++m_in;
        }
        return m_in != before;
    }

    /// Takes one group of four that line breaks may interrupt. False when the scan ended before
    /// its fourth character; what had been collected is then written.
    bool TakeGroup();

    /// Takes everything up to the end of the scan.
    Base64Run TakeRest();

    Base64Run Result() const {
        return {static_cast<std::size_t>(m_out - m_outBegin),
                static_cast<std::size_t>(m_in - m_begin)};
    }

  private:
    void TakeUnbroken();

    const char* m_in;
    const char* m_end;
    unsigned char* m_out;
    const char* m_begin;
    unsigned char* m_outBegin;
};

Base64Run DecodePlain(const char* in, std::size_t length, unsigned char* out);

/// Needs a processor with AVX2.
Base64Run DecodeAvx2(const char* in, std::size_t length, unsigned char* out);

/// True when this processor can run DecodeAvx2().
bool HasAvx2();

}  // namespace ca::base64
