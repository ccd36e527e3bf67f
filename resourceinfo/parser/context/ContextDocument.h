#pragma once

#include "resourceinfo/parser/context/InputFile.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/SurveyNotes.h"
#include "resourceinfo/parser/context/ValueDigests.h"
#include "zel/Assert.h"

#include <optional>

namespace Context {

/// The JSON document of one context file, null when the file cannot be opened or read, or is no valid JSON
/// (also: when it nests deeper than 1,000 levels, holds a string or number longer than 16 MiB, or more values
/// in members that are read than PruningFilter::mostKeptOf allows). A file that cannot be opened or read
/// leaves a trace line at level 0.
///
/// As long as it lives, the failures of its thread say the file and the place in it that was read last, or
/// why the document is null.
class ContextDocument : private Zel::InputScope {
  public:
    /// What is taken while the file is read, for a survey.
    struct Notes {
        SurveyNotes places;
        std::optional<ValueDigests> digests; ///< only those that are there are filled
    };

    /// Reads the whole file at a path, through an object that has none open yet, and closes it. Where there
    /// are notes, it takes them.
    ContextDocument( String const& path, InputFile& file, Notes* notes = nullptr );
    ~ContextDocument() override;

    /// Whether the file could be read to its end, and is valid JSON.
    bool isRead() const { return place_.problem == Problem::none; }
    Json root() const { return Json( document_ ); }
    JsonValue const& value() const { return document_; }

  private:
    using Problem = Zel::InputPlace::Problem;

    void read( InputFile& file, Notes* notes );
    void unreadable( Problem problem, String const& reason );
    void malformed( InputFile& file, std::size_t offset, String const& reason );
    void locate( Zel::InputPlace& place ) const override;

    Zel::InputPlace place_; // the file, and why the document is null
    JsonDocument document_;
};

} // namespace Context
