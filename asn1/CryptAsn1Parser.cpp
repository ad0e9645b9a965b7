#include "asn1/CryptAsn1Parser.h"

#include "asn1/Asn1BlockPool.h"
#include "asn1/Asn1BlockReader.h"
#include "asn1/BlockWriter.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"

#include <memory>

// Here, above the reader, so that blocks need not know it.
void CAsn1Block::Parse(unsigned char* data, unsigned int* pos, unsigned int* absoluteOffset,
                       unsigned int size, bool noThrow, bool continueOnLengthMismatch) {
    DeleteInnerBlocks();
    tag = 0;
    isUnknownLength = false;
    contentLength = totalLength = 0;
    CAsn1BlockReader reader(data, *pos, size, noThrow, continueOnLengthMismatch);
    reader.SetOffset(*absoluteOffset);
    reader.Read(*this);
    *pos = reader.GetPosition();
    *absoluteOffset = reader.GetOffset();
}

CCryptAsn1Parser::~CCryptAsn1Parser() {
    DeleteRoots();
}

void CCryptAsn1Parser::DeleteRoots() noexcept {
    CAsn1BlockPool::Destroy(m_roots);
    m_roots.clear();
}

void CCryptAsn1Parser::Parse(unsigned char* data, unsigned int size, bool stopAtTruncation,
                             bool continueOnLengthMismatch, bool singleRoot) {
    DeleteRoots();
    m_errorCode = ca::kErrNone;
    m_totalLength = 0;
    CAsn1BlockReader reader(data, 0, size, /*noThrow=*/!stopAtTruncation, continueOnLengthMismatch);
    try {
        do {
            std::unique_ptr<CAsn1Block> root(reader.NewRoot());
            m_roots.push_back(root.get());
            reader.Read(*root.release());  // the roots own it now
        } while (reader.GetPosition() < size && !singleRoot);
        if (reader.GetPosition() < size) {
            LogEvent(SetZORNAMessage(kMsgAsn1TrailingData), /*isError=*/false);
        }
        // Nothing to recompute when every length was found in its shortest form and kept.
        m_totalLength = reader.AreLengthsFinal() ? reader.GetPosition() : GetTotalLength();
    } catch (const ca::Exception& e) {
        m_errorCode = e.errorCode;
        // Damage is an outcome of a parse, which the error code tells; anything else is a failure.
        if (e.errorCode != ca::kErrAsn1UnexpectedEnd && e.errorCode != ca::kErrAsn1Corrupted) {
            throw;
        }
    }
}

unsigned int CCryptAsn1Parser::GetTotalLength() {
    std::uint64_t length = 0;
    for (CAsn1Block* root : m_roots) {
        length += root->GetTotalLength(/*recompute=*/true);
    }
    m_totalLength = CheckedAsn1Length(length);
    return m_totalLength;
}

void CCryptAsn1Parser::Build(unsigned char* out) {
    // Logged only: what was read before the damage is written all the same.
    if (m_errorCode != ca::kErrNone) {
        ca::LogError(L"CCryptAsn1Parser::Build", CA_HERE, m_errorCode, /*throwIt=*/false);
    }
    CBlockWriter writer(out, m_totalLength);
    for (const CAsn1Block* root : m_roots) {
        writer.Write(*root);
    }
}

CAsn1Block* CCryptAsn1Parser::GetBlockByPath(const std::wstring& path) const {
    return FindBlockByPath(m_roots, path);
}

ca::BytePtr CCryptAsn1Parser::GetAsn1Structure(std::size_t* length) const {
    if (m_roots.empty()) {
        return {};
    }
    return m_roots.front()->ToJson(length);
}

ca::BytePtr CCryptAsn1Parser::GetAsn1Structure(unsigned char* data, unsigned int size,
                                               std::size_t* length) {
    Parse(data, size, /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
          /*singleRoot=*/false);
    return GetAsn1Structure(length);
}
