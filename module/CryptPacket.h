#pragma once

#include "common/Json.h"
#include "module/CancellationToken.h"
#include "records/Blob.h"
#include "records/FileData.h"
#include "records/SerializableContainer.h"
#include "records/StoreAddress.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class CCallContext;

namespace ca {

class CJsonObject;
struct TransferSettings;

/// Bits of CryptRequest::present: which of the keys whose absence differs from 0 were there.
enum RequestPresence : std::uint32_t {
    kPresentTest = 1,
    kPresentIsAttached = 2,
    kPresentNeedExtraction = 4,
    kPresentAddSigner = 8,
    kPresentStreamFinalChunk = 16,
    kPresentCertInclude = 32,
    kPresentSignerIndex = 64,
    kPresentStreamId = 128,
};

/// A request as read from its JSON text.
class CryptRequest {
  public:
    /// \param transfers  how "fileDataUrl" is fetched; it outlives the request. Null: defaults.
    explicit CryptRequest(const TransferSettings* transfers = nullptr) : m_transfers(transfers) {}

    /// Reads a request into this object, which is fresh; absent keys leave their members.
    ///
    /// The text is a JSON object and ends at the first NUL inside `length`, or at `length`.
    /// Deliberate: a text that announces the length of its Base64 file data is changed in place,
    /// inside these bounds, so that the payload is decoded from where it lies.
    /// Throws ca::Exception 16300 for null, a text that is not a JSON object, or a record of the
    /// wrong shape; 16118 when announced octets are missing or Base64 does not decode; 16197 when a value
    /// is too long; what Http::GetBlob() and, with "fileDataUrl", InitString::Append() throw. A key
    /// of the wrong JSON type: JsonTypeFault().
    void FromJson(const char* data, unsigned length);

    std::int32_t mode = 0;        ///< number of the operation
    std::wstring extInitParams;   ///< parameters of this call, see InitString
    std::wstring clientId;        ///< whose context the call uses
    bool test = false;            ///< the operation is skipped
    bool isAttached = false;      ///< the signature is to enclose the content
    bool needExtraction = false;  ///< the content is to be extracted
    bool addSigner = false;
    bool streamFinalChunk = false;  ///< the last chunk of a stream
    std::uint32_t certInclude = 0;
    std::uint32_t signerIndex = 0;
    std::uint32_t streamId = 0;  ///< names a running stream
    std::wstring senderCertId;
    std::wstring recipientCertId;
    std::wstring comment;
    std::wstring uri;
    Blob params;  ///< "hashAlg": the octets of the wide text; else the decoded "params"
    Blob sendSignData;
    std::vector<Blob> signatures;
    std::optional<StoreAddresses> currentStores;  ///< none: the key was absent
    std::wstring uploadUrl;                       ///< where the result is sent
    bool redirected = false;
    std::uint32_t present = 0;      ///< RequestPresence
    bool attachBinary = false;      ///< the file data came raw, so the answer's goes raw
    SerializableContainer objects;  ///< file data and the other records of the request

  private:
    void ReadBlobs(const CJsonObject& root);
    void ReadRecords(const CJsonObject& root);

    const TransferSettings* m_transfers;
};

/// An answer: error fields, a few values, and the records of its container.
class CryptResponse {
  public:
    /// Writes the answer as one JSON object.
    void ToJson(JsonBuffer& text) const;
    /// The same for the last time: texts that records keep move into the answer. Of the records only
    /// the raw file data is of use then. \param text  of jsonHeap.
    void TakeJson(JsonBuffer& text);

    /// Reads such a text, and the octets after its NUL, into this object, which is fresh.
    /// Throws as CryptRequest::FromJson() does.
    void FromJson(const char* data, unsigned length);

    /// The file data whose octets follow the text; null when none do.
    const FileData* RawFileData();

    std::uint32_t errorCode = 0;
    std::wstring errorMessage;
    std::wstring needCertId;     ///< a certificate that the operation lacks; written unless empty
    std::uint32_t streamId = 0;  ///< written unless 0
    Blob sendSignData;           ///< written unless empty
    bool isAttached = false;     ///< stands beside the list of signatures
    bool attachBinary = false;   ///< file data goes raw after the text
    SerializableContainer objects;

  private:
    void WriteTo(JsonWriter& writer) const;
};

/// One request with its answer.
class CryptPacket {
  public:
    /// \param transfers  how data are fetched and sent; it outlives the packet. Null: defaults.
    explicit CryptPacket(const TransferSettings* transfers = nullptr)
        : request(transfers), m_transfers(transfers) {}
    CryptPacket(const CryptPacket&) = delete;
    CryptPacket& operator=(const CryptPacket&) = delete;
    ~CryptPacket() = default;

    SerializableContainer& Request() noexcept { return request.objects; }
    SerializableContainer& Response() noexcept { return response.objects; }

    /// How data are fetched and sent for this request; null: defaults.
    const TransferSettings* Transfers() const noexcept { return m_transfers; }

    /// Sends the answer's file data to the request's upload address; does nothing when the answer
    /// holds none. Throws what Http::Upload() throws.
    void UploadFileData(std::uint32_t timeoutMs);

    /// Marks the running call as cancelled.
    void Cancel() noexcept;

    CryptRequest request;
    CryptResponse response;
    CCallContext* context = nullptr;            ///< during a call; its owner unlinks it
    CancellationToken* cancellation = nullptr;  ///< during a call; its owner unlinks it

  private:
    const TransferSettings* m_transfers;
};

}  // namespace ca
