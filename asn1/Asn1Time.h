#pragma once

#include "asn1/Asn1Primitives.h"

#include <ctime>
#include <optional>
#include <string>

/// Time ::= CHOICE { utcTime UTCTime, generalTime GeneralizedTime }     RFC 5280, 4.1.2.5
/// The form follows the tag of the block; the derived classes fix it.
class CAsn1Time : public CAsn1Object {
  public:
    explicit CAsn1Time(CAsn1Block* block, CAsn1Object* parent = nullptr)
        : CAsn1Object(block, parent) {}

    /// Throws std::invalid_argument or std::out_of_range for a field that is not a number.
    void Decode() override;
    /// Day.month.year and the time of day as the locale writes it.
    std::wstring GetFormattedString(unsigned int flags) const override;
    void _Encode() override { _EncodeTime(); }

    /// The fields with the zone offset taken off.
    const std::tm& GetTime() const { return m_time; }
    void SetTime(const std::tm& time);
    /// As read, east of Greenwich positive; 0 without one.
    int GetZoneMinutes() const { return m_zoneMinutes; }
    /// To be written after the time. \param hours  its sign is that of the offset.
    void SetTimeZoneOffset(int hours, int minutes);

  protected:
    enum class Form { kByTag, kUtc, kGeneralized };

    CAsn1Time(Form form, CAsn1Block* block, CAsn1Object* parent)
        : CAsn1Object(block, parent), m_form(form) {}
    CAsn1Time(Form form, unsigned char tag) : CAsn1Object(tag), m_form(form) {}

    /// Deliberate: UTCTime has no pivot, every year is 2000 + YY, and only UTCTime is normalised as
    /// UTC; GeneralizedTime goes through the local time zone.
    void _DecodeTime(CAsn1Block* block, int& zoneMinutes, std::tm& time) const;
    void _EncodeTime();

  private:
    bool IsGeneralized() const;

    struct Zone {
        int hours;
        int minutes;
    };

    Form m_form = Form::kByTag;
    std::tm m_time{};
    int m_zoneMinutes = 0;
    std::optional<Zone> m_writtenZone;
};

class CAsn1UTCTime : public CAsn1Time {
  public:
    static constexpr unsigned char kTag = kAsn1UtcTime;

    explicit CAsn1UTCTime(CAsn1Block* block, CAsn1Object* parent = nullptr)
        : CAsn1Time(Form::kUtc, block, parent) {}
    CAsn1UTCTime() : CAsn1Time(Form::kUtc, kTag) {}

    std::string GetTagName() const override { return Asn1TagName(kTag); }
};

class CAsn1GeneralizedTime : public CAsn1Time {
  public:
    static constexpr unsigned char kTag = kAsn1GeneralizedTime;

    explicit CAsn1GeneralizedTime(CAsn1Block* block, CAsn1Object* parent = nullptr)
        : CAsn1Time(Form::kGeneralized, block, parent) {}
    CAsn1GeneralizedTime() : CAsn1Time(Form::kGeneralized, kTag) {}

    std::string GetTagName() const override { return Asn1TagName(kTag); }
};
