#pragma once

// The surveys of context files, as tests take them.

#include "resourceinfo/parser/context/ContextFile.h"
#include "resourceinfo/parser/context/Survey.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"
#include "tests/support/TextFile.h"

#include <utility>

namespace BfResourceInfo {

/// While it lives, takes the surveys of what its thread loads; then the former sink is back.
class SurveyCollector : public Context::SurveySink {
  public:
    enum class Wanted { facts, digests };

    explicit SurveyCollector( Wanted wanted = Wanted::facts )
        : wanted_( wanted ), former_( Context::surveySinkIs( this ) ) {}
    ~SurveyCollector() override { Context::surveySinkIs( former_ ); }
    SurveyCollector( SurveyCollector const& ) = delete;
    SurveyCollector& operator=( SurveyCollector const& ) = delete;

    void take( Context::FileSurvey survey ) noexcept override { files.push_back( std::move( survey ) ); }
    bool wantsDigests() const override { return wanted_ == Wanted::digests; }

    std::vector<Context::FileSurvey> files;

  private:
    Wanted const wanted_;
    Context::SurveySink* const former_;
};

/// Loads a context file, and says the condition that ended that; nothing when none did.
inline String conditionOfLoading( BfResourceParser& parser, Context::InputFile&& file,
                                  BfResourceParserContext const& context = {},
                                  String const& path = "context.json" ) {
    Support::ThrowingAssertions const throwing;
    try {
        parseContextJson( &parser, path, context, file );
    } catch( Zel::AssertionError const& error ) {
        return error.failure().condition;
    }
    return "";
}

/// The survey of a text, whether it can be loaded or not.
inline Context::FileSurvey surveyOf( String const& text, BfResourceParserContext const& context = {},
                                     SurveyCollector::Wanted wanted = SurveyCollector::Wanted::facts ) {
    SurveyCollector collector( wanted );
    conditionOfLoading( *emptyParser(), Support::TextFile( text ), context );
    return std::move( collector.files.at( 0 ) );
}

} // namespace BfResourceInfo
