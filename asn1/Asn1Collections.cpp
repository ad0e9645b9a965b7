#include "asn1/Asn1Collections.h"

#include "common/ErrorCodes.h"
#include "common/Log.h"

#include <memory>
#include <vector>

CAsn1Collection::CAsn1Collection(CAsn1Block* block, CAsn1Object* parent)
    : CAsn1Object(block, parent) {
    if (block != nullptr && !block->IsConstructed()) {
        ca::LogError(L"CreatePrimitiveObject", CA_HERE, ca::kErrAsn1BadTag, /*throwIt=*/false);
    }
}

void CAsn1Collection::Decode() {
    // A list of work instead of recursion: the depth is a stranger's choice.
    std::vector<CAsn1Collection*> open{this};
    while (!open.empty()) {
        CAsn1Collection* collection = open.back();
        open.pop_back();
        collection->DeleteInnerObjects();
        const CAsn1Block* block = collection->GetBlock();
        for (std::size_t i = 0; block != nullptr && i < block->GetInnerBlockCount(); ++i) {
            std::unique_ptr<CAsn1Object> member(
                CreatePrimitiveObject(block->GetInnerBlock(i), collection));
            CAsn1Object* made = collection->OwnInnerObject(std::move(member));
            if (auto* inner = dynamic_cast<CAsn1Collection*>(made)) {
                open.push_back(inner);
            } else {
                made->Decode();
            }
        }
    }
}
