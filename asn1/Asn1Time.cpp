#include "asn1/Asn1Time.h"

#include "common/TimeUtil.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>

namespace {

constexpr std::size_t kLongestTime = 32;  // more than every field reaches

// The field of `digits` characters at `position`, as std::stoi reads it.
int Field(const std::string& text, std::size_t position, std::size_t digits) {
    return std::stoi(text.substr(position, digits));
}

// Minutes of the offset after the seconds; 0 when there is none.
int ReadZone(const std::string& text, std::size_t position) {
    const char sign = position < text.size() ? text[position] : '\0';
    if (sign != '+' && sign != '-') {
        return 0;
    }
    const int minutes = Field(text, position + 1, 2) * 60 + Field(text, position + 3, 2);
    return sign == '+' ? minutes : -minutes;
}

}  // namespace

bool CAsn1Time::IsGeneralized() const {
    if (m_form != Form::kByTag) {
        return m_form == Form::kGeneralized;
    }
    return GetBlock() != nullptr && GetBlock()->tag == kAsn1GeneralizedTime;
}

void CAsn1Time::Decode() {
    if (GetBlock() != nullptr) {
        _DecodeTime(GetBlock(), m_zoneMinutes, m_time);
    }
}

std::wstring CAsn1Time::GetFormattedString([[maybe_unused]] unsigned int flags) const {
    // %X is the locale's time of day: long in some, but never that long.
    wchar_t text[128];
    const std::size_t length = std::wcsftime(text, std::size(text), L"%d.%m.%Y %X", &m_time);
    return {text, length};
}

void CAsn1Time::SetTime(const std::tm& time) {
    m_time = time;
    SetChanged(true);
}

void CAsn1Time::SetTimeZoneOffset(int hours, int minutes) {
    m_writtenZone = Zone{hours, minutes};
    SetChanged(true);
}

void CAsn1Time::_DecodeTime(CAsn1Block* block, int& zoneMinutes, std::tm& time) const {
    auto content = block->GetRawContent();
    // What comes after is of no use, and the copy stays small whatever a file announces.
    content = content.first(std::min(content.size(), kLongestTime));
    const bool generalized = IsGeneralized();
    const std::string text(content.begin(), content.end());
    const std::size_t month = generalized ? 4 : 2;
    std::tm read{};
    // Deliberate: two digits count from 2000 even where RFC 5280, 4.1.2.5.1, means 1950 to 1999.
    read.tm_year = (generalized ? Field(text, 0, 4) : 2000 + Field(text, 0, 2)) - 1900;
    read.tm_mon = Field(text, month, 2) - 1;
    read.tm_mday = Field(text, month + 2, 2);
    read.tm_hour = Field(text, month + 4, 2);
    read.tm_min = Field(text, month + 6, 2);
    read.tm_sec = Field(text, month + 8, 2);
    zoneMinutes = ReadZone(text, month + 10);
    // An offset tells how far the clock is ahead of UTC; the C library carries minutes past the
    // hour.
    read.tm_min -= zoneMinutes;
    // mktime() reads the time zone of the process, which another thread may be setting.
    const ca::CTimeZoneLock lock;
    if (generalized) {
        read.tm_isdst = -1;  // whether it is summer there is for the time zone to say
        std::mktime(&read);
    } else {
        timegm(&read);
    }
    time = read;
}

void CAsn1Time::_EncodeTime() {
    // More than all fields take, whatever numbers a caller has set.
    char text[96];
    const int year = m_time.tm_year + 1900;
    int length = std::snprintf(text, sizeof text, IsGeneralized() ? "%04d" : "%02d",
                               IsGeneralized() ? year : year % 100);
    length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length),
                            "%02d%02d%02d%02d%02d", m_time.tm_mon + 1, m_time.tm_mday,
                            m_time.tm_hour, m_time.tm_min, m_time.tm_sec);
    if (m_writtenZone) {
        length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length),
                                "%+03d%02d", m_writtenZone->hours, m_writtenZone->minutes);
    }
    SetContent({text, text + length});
}
