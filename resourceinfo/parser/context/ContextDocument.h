#pragma once

#include "resourceinfo/parser/context/InputFile.h"
#include "resourceinfo/parser/context/Json.h"
#include "zel/Assert.h"

namespace Context {

/// The JSON document of one context file, null when the file cannot be opened or read, or is no valid JSON
/// (also: when it nests deeper than 1,000 levels, holds a string or number longer than 16 MiB, or more than
/// 128 MiB of values in members that are read). A file that cannot be opened or read leaves a trace line at
/// level 0.
///
/// As long as it lives, the failures of its thread say the file and the place in it that was read last, or
/// why the document is null.
class ContextDocument : private Zel::InputScope {
  public:
    /// Reads the whole file at a path, through an object that has none open yet, and closes it.
    ContextDocument( String const& path, InputFile& file );
    ~ContextDocument() override;

    Json root() const { return Json( document_ ); }

  private:
    void read( InputFile& file );
    void unreadable( char const* what, String const& reason );
    void describe( std::ostream& os ) const override;

    String const path_;
    String problem_; // why the document is null
    JsonDocument document_;
};

} // namespace Context
