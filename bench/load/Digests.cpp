// Ours for a front end that compares: with the survey and the digests of all values.

#include "bench/load/Measure.h"

#include "resourceinfo/BfResourceInfoIntf.h"
#include "resourceinfo/parser/context/Survey.h"

namespace {

class Sink : public Context::SurveySink {
  public:
    void take( Context::FileSurvey survey ) noexcept override { surveys_.push_back( std::move( survey ) ); }
    bool wantsDigests() const override { return true; }

  private:
    std::vector<Context::FileSurvey> surveys_;
};

} // namespace

int main( int argc, char** argv ) {
    Sink sink;
    Context::surveySinkIs( &sink );
    auto const load = []( Input const& input ) {
        return BfResourceInfo::bfResourceInfoIntfFactory( input.switchConf );
    };
    return measure( argc, argv, load, []( auto const& model ) { return answerOf( contentOf( *model ) ); } );
}
