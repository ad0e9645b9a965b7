#include "host/LineReader.h"

#include "host/HostError.h"
#include "host/Terminal.h"

#include <string_view>

namespace host {

CLineReader::CLineReader(const std::string& path)
    : m_file(path), m_visibleName(Harmless(m_file.GetName())) {}

bool CLineReader::Next(std::string& line) {
    line.clear();
    bool isEnded = false;
    bool isThere = false;
    ++m_number;
    while (!isEnded && (m_begin < m_end || Fill())) {
        std::string_view part(m_buffer.data() + m_begin, m_end - m_begin);
        const std::size_t end = part.find('\n');
        isEnded = end != std::string_view::npos;
        isThere = true;
        part = part.substr(0, end);
        m_begin += part.size() + (isEnded ? 1 : 0);
        // A line may be a whole file: bounded as one, and refused before it is kept.
        if (part.size() > m_file.GetBound() - line.size()) {
            throw CHostError(kExitUsage, GetPlace() + " does not end within " +
                                             std::to_string(m_file.GetBound() >> 20U) + " MiB");
        }
        line.append(part);
    }
    // Files of other systems end their lines with both.
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return isThere;
}

std::string CLineReader::GetPlace() const {
    return "line " + std::to_string(m_number) + " of " + m_visibleName;
}

bool CLineReader::Fill() {
    constexpr std::size_t kChunk = std::size_t{1} << 16U;
    m_buffer.resize(kChunk);
    m_begin = 0;
    m_end = m_file.Read(m_buffer.data(), kChunk);
    m_position += m_end;
    return m_end != 0;
}

}  // namespace host
