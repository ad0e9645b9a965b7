#pragma once

#include "common/ISerializable.h"
#include "records/RecordOctets.h"

#include <cstdint>
#include <string>

namespace ca {

/// The outcome of checking a signature and its certificate: codes of ErrorCodes.h and their texts.
class VerificationResult : public ISerializable {
  public:
    /// A missing key gives its default. Throws ca::Exception 16300 for a wrong type.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeVerifyResult; }
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    std::uint32_t signatureVerifyResult = 0;
    std::wstring signatureVerifyResultString;
    std::uint32_t certificateVerifyResult = 0;
    std::wstring certificateVerifyResultString;
};

}  // namespace ca
