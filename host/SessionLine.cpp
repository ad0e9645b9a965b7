#include "host/SessionLine.h"

#include "host/FileIo.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/ModeTable.h"
#include "host/Suggestion.h"

#include <optional>
#include <utility>

namespace {

using host::CHostError;
using host::CRequestBuilder;

[[noreturn]] void Fail(const std::string& text) {
    throw CHostError(host::kExitUsage, text);
}

// A directive whose value is a string; nothing when the line has none.
std::optional<std::string> TakeText(CRequestBuilder& builder, const char* key) {
    const std::optional<std::string> json = builder.Take(key);
    if (!json) {
        return std::nullopt;
    }
    std::optional<std::string> text = host::UnquoteJson(*json);
    if (!text) {
        Fail(std::string(key) + " takes a string");
    }
    return text;
}

void ApplyMode(CRequestBuilder& builder) {
    if (const auto name = TakeText(builder, "@mode")) {
        const std::optional<std::uint32_t> mode = host::ModeByName(*name);
        if (!mode) {
            Fail(host::NoSuchMode(*name));
        }
        builder.Set("mode", std::to_string(*mode));
    }
}

bool TakeInteractive(CRequestBuilder& builder, bool otherwise) {
    const std::optional<std::string> json = builder.Take("@interactive");
    if (!json) {
        return otherwise;
    }
    // JSON as it was written anew by Load(): no blanks to think of.
    if (*json != "true" && *json != "false") {
        Fail("@interactive takes true or false");
    }
    return *json == "true";
}

host::PayloadForm TakeForm(CRequestBuilder& builder) {
    const std::string form = TakeText(builder, "@form").value_or("base64");
    if (form != "base64" && form != "binary") {
        Fail("@form takes \"base64\" or \"binary\"");
    }
    return form == "binary" ? host::PayloadForm::kBinary : host::PayloadForm::kBase64;
}

// Puts a request together whose line has directives.
void Assemble(CRequestBuilder& builder, host::SessionRequest& session,
              const host::LineSource& source) {
    ApplyMode(builder);
    session.request.interactive = TakeInteractive(builder, source.interactive);
    session.output = TakeText(builder, "@output").value_or("");
    const host::PayloadForm form = TakeForm(builder);
    const std::optional<std::string> file = TakeText(builder, "@file");
    // Only now: what is left with an @ is not a directive. A typing error must not go to the
    // module, which would ignore it as an unknown key.
    if (const std::string unknown = builder.FindPrefixed("@"); !unknown.empty()) {
        Fail("unknown directive " + unknown +
             host::DidYouMean(unknown, {"@mode", "@file", "@form", "@output", "@interactive"}));
    }
    if (file == "-" && source.isStandardInput) {
        Fail("@file cannot be the standard input, which holds the session");
    }
    const std::string payload = file ? host::ReadFile(*file) : "";
    session.request.octets = builder.Build(file ? &payload : nullptr, form);
}

}  // namespace

namespace host {

SessionRequest ReadSessionLine(std::string line, const LineSource& source) {
    SessionRequest session;
    session.request.interactive = source.interactive;
    CRequestBuilder builder;
    // The search costs less than parsing; requests without directives go on octet for octet, also
    // malformed ones, which a session may want to send.
    const bool hasDirectives = line.find("\"@") != std::string::npos &&
                               builder.Load(line).empty() && !builder.FindPrefixed("@").empty();
    if (hasDirectives) {
        Assemble(builder, session, source);
    } else {
        session.request.octets = std::move(line);
    }
    session.request.name = source.place;
    if (const auto mode = GuessMode(session.request.octets)) {
        session.request.name += ", " + NameMode(*mode);
    }
    return session;
}

}  // namespace host
