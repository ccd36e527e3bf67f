// simdjson On Demand: one walk forward through the whole file in memory, without a document. Compiled for the
// processor that it runs on, as its manual asks.

#include "bench/load/Measure.h"
#include "bench/load/PullOut.h"

#include <simdjson.h>

namespace {

namespace ondemand = simdjson::ondemand;

struct SimdjsonOnDemand {
    template<class Value, class Each>
    static void members( Value&& value, Each each ) {
        for( ondemand::field field : value.get_object() )
            each( field.key(), field.value() );
    }
    template<class Each>
    static void elements( ondemand::value& value, Each each ) {
        for( ondemand::value element : value.get_array() )
            each( element );
    }
    static std::string_view text( ondemand::value& value ) { return value.get_string(); }
    static U32 number( ondemand::value& value ) { return static_cast<U32>( value.get_uint64().value() ); }
    static bool boolean( ondemand::value& value ) { return value.get_bool(); }
};

} // namespace

int main( int argc, char** argv ) {
    auto const load = []( Input const& input ) {
        simdjson::padded_string const text = simdjson::padded_string::load( input.contextFile );
        ondemand::parser parser;
        ondemand::document document = parser.iterate( text );
        return PullOut<SimdjsonOnDemand>( input.contextFile )( document );
    };
    return measure( argc, argv, load, answerOf );
}
