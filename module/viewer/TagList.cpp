#include "module/viewer/TagList.h"

#include "module/viewer/ViewerText.h"
#include "records/text/VisibleText.h"

#include <string>

namespace ca {

std::vector<NameTag> ReadTagList(std::wstring_view tags) {
    std::vector<NameTag> list;
    std::wstring tag;
    std::wstring text;
    bool isValue = false;
    const auto end = [&] {
        list.push_back({ShownLine(tag), ShownText(text)});
        tag.clear();
        text.clear();
        isValue = false;
    };
    for (std::size_t i = 0; i < tags.size() && list.size() < kMaxListed; ++i) {
        const wchar_t c = tags[i];
        std::wstring& part = isValue ? text : tag;
        if (c == L'\\' && i + 1 < tags.size()) {
            const wchar_t next = tags[++i];
            part += next == L'u' ? L"\\u" : std::wstring(1, next == L'n' ? L'\n' : next);
        } else if (c == L'=' && !isValue) {
            isValue = true;
        } else if (c == L';') {
            end();
        } else {
            part += c;
        }
    }
    if (!tag.empty() && list.size() < kMaxListed) {
        end();
    }
    return list;
}

}  // namespace ca
