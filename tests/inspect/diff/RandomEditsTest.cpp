#include "tests/inspect/diff/Compared.h"

#include <random>

namespace {

using Support::JsonTree;

class RandomEdits : public InFolder {
  protected:
    /// Another value of the same type; nothing for objects and arrays.
    std::optional<JsonTree> otherThan( JsonTree const& value ) {
        String const text = value.text();
        if( text.front() == '{' || text.front() == '[' )
            return std::nullopt;
        if( text.front() == '"' )
            return JsonTree::string( text.substr( 1, text.size() - 2 ) + letter() );
        if( text == "true" || text == "false" )
            return JsonTree::boolean( text == "false" );
        return JsonTree::number( std::stoll( text ) + 1 + static_cast<std::int64_t>( random_() % 7 ) );
    }
    std::size_t oneOf( std::size_t count ) { return random_() % count; }

  private:
    String letter() { return String( 1, static_cast<char>( 'a' + random_() % 26 ) ); }

    std::mt19937 random_{ 16 };
};

TEST_F( RandomEdits, OfSeveralValuesAreMirroredTheOtherWayRound ) {
    JsonTree const program = editedProgram().tree();
    auto const pointers = program.pointers();
    writeFile( "old.json", program.text() );
    auto const old = loadedWithDigests( "old.json" );
    std::ostringstream trace;
    int loaded = 0;
    for( int tries = 0; loaded < 300 && tries < 3000; ++tries ) {
        JsonTree tree = program;
        for( std::size_t edits = 1 + oneOf( 5 ); edits > 0; --edits ) {
            JsonTree& value = tree.at( pointers[ oneOf( pointers.size() ) ] );
            value = otherThan( value ).value_or( value );
        }
        std::filesystem::remove( "new.json" );
        writeFile( "new.json", tree.text() );
        auto const now = Bfri::loadConfiguration( "new.json", Bfri::Survey::digests, trace );
        if( auto const* const configuration = std::get_if<Bfri::Configuration>( &now ) ) {
            ++loaded;
            SCOPED_TRACE( tree.text() );
            expectMirrored( compare( old, *configuration ), compare( *configuration, old ) );
            ASSERT_FALSE( HasFailure() );
        }
    }
    EXPECT_EQ( loaded, 300 );
}

TEST_F( RandomEdits, AreAllSeenAndTold ) {
#ifdef BFRI_SANITIZED
    constexpr int wanted = 500; // each is a load, and there loads are slow
#else
    constexpr int wanted = 10'000;
#endif
    Support::ContextBuilder const program = editedProgram();
    JsonTree tree = program.tree();
    auto const pointers = tree.pointers();
    writeFile( "old.json", program.text() );
    auto const old = loadedWithDigests( "old.json" );
    std::ostringstream trace;
    int loaded = 0;
    for( int tries = 0; loaded < wanted && tries < 10 * wanted; ++tries ) {
        JsonTree& value = tree.at( pointers[ oneOf( pointers.size() ) ] );
        JsonTree const former = value;
        auto const other = otherThan( value );
        if( !other )
            continue;
        value = *other;
        std::filesystem::remove( "new.json" ); // a file that is cut to nothing waits for the disk
        writeFile( "new.json", tree.text() );
        auto const now = Bfri::loadConfiguration( "new.json", Bfri::Survey::digests, trace );
        if( auto const* const configuration = std::get_if<Bfri::Configuration>( &now ) ) {
            ++loaded;
            auto const verdict = verdictOf( compare( old, *configuration ) );
            ASSERT_TRUE( verdict.differs ) << former.text() << " -> " << other->text();
            ASSERT_FALSE( noticesIn( verdict ).empty() ) << former.text() << " -> " << other->text();
        }
        value = former;
    }
    EXPECT_EQ( loaded, wanted );
}

} // namespace
