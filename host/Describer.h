#pragma once

#include "host/Answer.h"
#include "host/FileList.h"
#include "host/ModuleLoader.h"
#include "host/OrderedOutput.h"
#include "host/ProgressBar.h"
#include "host/RecordText.h"
#include "records/objects/ObjectKinds.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// How descriptions are written.
enum class DescribeForm : std::uint8_t {
    kText,  ///< a headline and the records for people
    kJson,  ///< the answer or the description, indented, with "file" in front
    /// {"file":...,"kind":...,"answer":...}, "description" where the module describes no such
    /// objects, or {"file":...,"error":...,...}; "object" is the number of one of several.
    kLines,
};

/// What the module is asked to describe, and how that is laid out.
struct DescribeRequest {
    /// "extInitParams" of requests for revocation lists: which entries; "" for the module's own
    /// choice.
    std::string listParams;
    RecordTextOptions text;
};

struct FileObjects;
struct FilePart;

/// Has files described by a module, one output a file in the order of the files, however many
/// threads ask.
class CDescriber {
  public:
    /// The references outlive the describer.
    CDescriber(const CModule& module, COrderedOutput& output, CProgressBar& progress,
               DescribeForm form, const DescribeRequest& request);

    /// Returns when every file is done. A file that cannot be read gets a note on the standard
    /// error too. Throws CHostError (usage) when the output fails.
    void Describe(const std::vector<ListedFile>& files, unsigned threads);

    /// Why files were not described, and how many for each reason; empty when all were.
    using FaultCounts = std::map<std::string, std::size_t>;
    const FaultCounts& GetFaults() const { return m_faults; }
    /// Whether there was a file that could not be read.
    bool GetUnreadable() const { return m_unreadable; }

  private:
    struct Outcome;

    void Work(const std::vector<ListedFile>& files) noexcept;
    bool Next(const std::vector<ListedFile>& files, std::size_t& number);
    OutputPiece DescribeFile(const ListedFile& file);
    std::vector<Outcome> Ask(const ListedFile& file) const;
    Outcome DescribePart(const FileObjects& file, const FilePart& part, const std::string& content,
                         const std::string& path) const;
    Outcome AskModule(const std::vector<ca::ObjectReader>& order, const std::string& octets,
                      const std::string& path) const;
    static Outcome Judge(ca::ObjectReader asked, CAnswer answer);

    // Which of a file's parts.
    struct Place {
        std::size_t number;
        std::size_t count;
    };
    std::string Write(const std::string& path, const Outcome& outcome, Place place) const;
    static std::string MembersOf(const std::string& path, Place place);
    static std::string WriteLine(const std::string& path, const Outcome& outcome, Place place);
    static std::string WriteJson(const std::string& path, const Outcome& outcome, Place place);
    std::string WriteText(const std::string& path, const Outcome& outcome, Place place) const;

    const CModule& m_module;
    COrderedOutput& m_output;
    CProgressBar& m_progress;
    DescribeForm m_form;
    std::string m_listParams;
    RecordTextOptions m_text;

    std::mutex m_mutex;  // guards the progress bar and what follows
    std::size_t m_next = 0;
    FaultCounts m_faults;
    bool m_unreadable = false;
    std::exception_ptr m_failure;
};

}  // namespace host
