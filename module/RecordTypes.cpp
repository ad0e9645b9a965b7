#include "module/RecordTypes.h"

#include "common/ConfigFileParser.h"
#include "common/PKIConfigFileParser.h"
#include "records/AttrCertInfo.h"
#include "records/CertInfo.h"
#include "records/CrlInfo.h"
#include "records/SignInfo.h"
#include "records/StoreAddress.h"
#include "records/StringArray.h"
#include "records/VerificationResult.h"

#include <algorithm>
#include <iterator>

namespace ca {
namespace {

using RecordPtr = std::unique_ptr<ISerializable>;

template <class Record>
RecordPtr Make() {
    return std::make_unique<Record>();
}

template <int type>
RecordPtr MakeStringArray() {
    return std::make_unique<StringArray>(type);
}

struct RecordRow {
    int type;
    bool isList;
    RecordPtr (*make)();
};

// In the order of their numbers.
// clang-format off
constexpr RecordRow kRecords[] = {
    {kTypeFileData,       false, &Make<FileData>},
    {kTypeStores,         true,  &MakeStringArray<kTypeStores>},
    {kTypeCertificates,   true,  &MakeStringArray<kTypeCertificates>},
    {kTypeSignInfo,       true,  &Make<SignInfos>},
    {kTypeSignInfoArray,  true,  &Make<SignInfosArray>},
    {kTypeCertInfo,       false, &Make<CertInfo2>},
    {kTypeCertInfos,      true,  &Make<CertInfos2>},
    {kTypeStoreAddress,   false, &Make<StoreAddress>},
    {kTypeStoreAddresses, true,  &Make<StoreAddresses>},
    {kTypeCrlInfo,        false, &Make<CrlInfo>},
    {kTypeConfig,         false, &Make<ConfigFileParser>},
    {kTypePkiConfig,      false, &Make<PKIConfigFileParser>},
    {kTypeVerifyResult,   false, &Make<VerificationResult>},
    {kTypeCertForCheck,   false, &Make<CertForCheck>},
    {kTypeAttrCertInfo,   false, &Make<AttrCertInfo>},
};
// clang-format on

const RecordRow* FindRow(int type) noexcept {
    // Fifteen rows: a search costs less than an index would.
    const auto* row =
        std::ranges::find_if(kRecords, [type](const RecordRow& each) { return each.type == type; });
    return row != std::end(kRecords) ? row : nullptr;
}

}  // namespace

RecordPtr MakeRecord(int type) {
    const RecordRow* row = FindRow(type);
    return row != nullptr ? row->make() : nullptr;
}

bool IsListRecord(int type) noexcept {
    const RecordRow* row = FindRow(type);
    return row != nullptr && row->isList;
}

FileData* FindFileData(SerializableContainer& objects) {
    return dynamic_cast<FileData*>(objects.GetObj(kTypeFileData));
}

}  // namespace ca
