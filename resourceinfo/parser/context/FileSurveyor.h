#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/ContextDocument.h"
#include "resourceinfo/parser/context/Survey.h"

namespace Context {

/// Takes the survey of one context file for the sink of this thread, if there is one: make it in front of the
/// document, call read() when that has been read and loaded() when the passes are done. The sink gets the
/// survey when the object goes, also after a failure.
class FileSurveyor {
  public:
    FileSurveyor( BfResourceInfo::BfResourceParser const& parser, String const& path,
                  BfResourceParserContext const& context );
    ~FileSurveyor();
    FileSurveyor( FileSurveyor const& ) = delete;
    FileSurveyor& operator=( FileSurveyor const& ) = delete;

    /// For the document; null when there is no sink.
    ContextDocument::Notes* notes() { return sink_ ? &notes_ : nullptr; }
    /// Nothing is surveyed of a file that could not be read.
    void read( ContextDocument const& document );
    void loaded();

  private:
    /// How many records the parser has.
    struct Counts {
        explicit Counts( BfResourceInfo::BfResourceParser const& parser );

        U32 resources, tables, counters, meters, wreds, registers, actions, learnQuantas;
    };
    static void addRecords( SurveyedTable& table, Counts& next );

    SurveySink* const sink_;
    BfResourceParserContext const context_;
    Counts const before_;
    ContextDocument::Notes notes_;
    FileSurvey survey_;
};

} // namespace Context
