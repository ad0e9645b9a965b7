#pragma once

#include "records/CertInfo.h"
#include "records/Payload.h"

#include <QString>

#include <deque>
#include <memory>
#include <vector>

namespace ca {

/// A file as it was handed in, and what the items of it view.
struct SourceFile {
    QString name;  ///< "" when nobody said
    std::vector<unsigned char> octets;
    std::vector<PayloadItem> payload;
    std::deque<std::vector<unsigned char>> copies;  ///< of elements that stand under another tag
    std::unique_ptr<CertInfo2> record;  ///< what was handed in in the place of octets, or null
};

}  // namespace ca
