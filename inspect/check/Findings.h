#pragma once

// What may be odd about a configuration that loads: one row per kind of finding, with its rule and texts.

#include "inspect/model/Configuration.h"

#include <optional>
#include <span>
#include <unordered_map>

namespace Bfri {

struct CheckContext;
struct FindingKind;

enum class Severity { note, warning, error };

char const* wordOf( Severity severity );

/// The severity of a word: "error", "warning" or "note"; nothing for any other.
std::optional<Severity> severityOf( std::string_view word );

/// A place in a context file.
struct FindingPlace {
    String file;
    Context::Place at;
};

/// One thing that is odd, and the record that it is about.
struct Finding {
    FindingKind const* kind;
    String what;                            ///< the kind of record: "counter"
    String name;                            ///< its name; for a pipeline its context file
    std::optional<U32> handle;              ///< of the record, if it is about one
    String says;                            ///< follows what, name and handle
    String contextFile;                     ///< empty if it is unknown, or if there are several
    std::optional<FindingPlace> place = {}; ///< where the record starts, or what the finding is about
    bool isKnown = false;                   ///< the baseline has it

    /// `counter "c" (0x00000001)`.
    String subject() const;
    /// The whole sentence: `counter "c" (0x00000001): ...`.
    String message() const { return subject() + ": " + says; }
};

/// Collects the findings of one rule.
class Findings {
  public:
    Findings( FindingKind const& kind, std::vector<Finding>& all ) : kind_( kind ), all_( all ) {}
    /// Without a context file, the file is derived from the handle if possible.
    void add( String what, String name, std::optional<U32> handle, String says, String contextFile = {},
              std::optional<FindingPlace> place = {} ) {
        all_.push_back( { &kind_, std::move( what ), std::move( name ), handle, std::move( says ),
                          std::move( contextFile ), std::move( place ) } );
    }

  private:
    FindingKind const& kind_;
    std::vector<Finding>& all_;
};

struct FindingKind {
    char const* code;  ///< "BF101"; stays the same for good, as does the title
    char const* title; ///< "unread-context-file"
    Severity severity;
    char const* meaning; ///< sentences, one line
    char const* matters;
    char const* advice;
    void ( *find )( CheckContext const& facts, Findings& findings );
};

/// Every kind, by ascending code.
std::span<FindingKind const> findingKinds();

/// All findings of a configuration that was loaded with a survey: errors, then warnings, then notes, each in
/// the order of the kinds.
std::vector<Finding> findingsOf( Configuration const& configuration );

} // namespace Bfri
