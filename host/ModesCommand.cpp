#include "host/ModesCommand.h"

#include "common/Encode.h"
#include "host/Configuration.h"
#include "host/HostError.h"
#include "host/ModeTable.h"
#include "host/ModuleOptions.h"
#include "host/StandardStreams.h"
#include "host/Terminal.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>
#include <string>
#include <string_view>

namespace {

constexpr const char* kEnglishNote = R"(
A gated operation uses a private key or shows a window: it needs --interactive, or
AllowServicePrivateKeyAccess=1 in the configuration.
)";
constexpr const char* kRussianNote = R"(
Операция за шлюзом пользуется закрытым ключом или показывает окно: ей нужен
--interactive или AllowServicePrivateKeyAccess=1 в конфигурации.
)";

struct ModesOptions {
    bool onlyNames = false;
    std::string language;
};

// A text in a column of so many characters.
std::string Cell(std::string_view text, std::size_t columns) {
    std::string cell(text);
    // By columns of the terminal: Cyrillic letters are two octets each.
    const std::size_t width = host::DisplayWidth(ca::u8u16(cell));
    return cell.append(columns > width ? columns - width : 0, ' ') + " ";
}

std::string Row(std::string_view number, std::string_view name, std::string_view gated,
                std::string_view purpose) {
    return Cell(number, 5) + Cell(name, 18) + Cell(gated, 6) + std::string(purpose) + "\n";
}

std::string Table(bool russian) {
    std::string text = russian ? Row("Режим", "Имя", "Шлюз", "Что делает")
                               : Row("Mode", "Name", "Gated", "What it does");
    for (const host::ModeRow& mode : host::AllModes()) {
        text += Row(std::to_string(mode.number), mode.name.empty() ? "-" : mode.name,
                    !mode.gated ? "-"
                    : russian   ? "да"
                                : "yes",
                    russian ? mode.russian : mode.english);
    }
    return text + (russian ? kRussianNote : kEnglishNote);
}

std::string Names() {
    std::string text;
    for (const host::ModeRow& mode : host::AllModes()) {
        text += mode.name.empty() ? "" : std::string(mode.name) + "\n";
    }
    return text;
}

}  // namespace

namespace host {

void AddModesCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command = program.add_subcommand("modes", "List the operations");
    const auto options = std::make_shared<ModesOptions>();
    command->add_flag("--names", options->onlyNames, "Only the names, one a line");
    AddLanguageOption(*command, options->language);
    command->footer("Examples:\n  cmhost modes\n  cmhost modes --names | sort -u");
    command->callback([options, &exitCode] {
        Put(options->onlyNames
                ? Names()
                : Table(IsRussian(options->language, FindConfiguration(/*given=*/""))));
        Flush();
        exitCode = kExitDone;
    });
}

}  // namespace host
