// simdjson's DOM: it reads the whole file and takes it apart with the best instructions of the processor.

#include "bench/load/Measure.h"
#include "bench/load/PullOut.h"

#include <simdjson.h>

namespace {

using simdjson::dom::element;

struct SimdjsonDom {
    template<class Each>
    static void members( element value, Each each ) {
        for( auto const& [ name, member ] : value.get_object() )
            each( name, member );
    }
    template<class Each>
    static void elements( element value, Each each ) {
        for( element const one : value.get_array() )
            each( one );
    }
    static std::string_view text( element value ) { return value.get_string(); }
    static U32 number( element value ) { return static_cast<U32>( value.get_uint64().value() ); }
    static bool boolean( element value ) { return value.get_bool(); }
};

} // namespace

int main( int argc, char** argv ) {
    auto const load = []( Input const& input ) {
        simdjson::dom::parser parser;
        element const document = parser.load( input.contextFile );
        return PullOut<SimdjsonDom>( input.contextFile )( document );
    };
    return measure( argc, argv, load, answerOf );
}
