#include "tests/cli/Inputs.h"

#include "cli/grammar/Completion.h"
#include "cli/grammar/LineParser.h"

#include <gmock/gmock.h>

namespace {

using namespace Bfri;
using Line = std::vector<String>;

// Lines that the commands understand, with every kind of word.
Line const lines[] = {
    { "summary", "switch.conf", "--json" },
    { "show", "switch.conf", "pipe.acl", "--color", "never" },
    { "show", "--json", "switch.conf", "--", "hash" },
    { "table", "--", "switch.conf", "pipe.acl" },
    { "stages", "switch.conf", "--stage", "3", "--list" },
    { "stages", "--stage=3", "switch.conf", "--json" },
    { "dump", "switch.conf" },
    { "lookup", "switch.conf", "--csv", "1", "2", "--", "3" },
    { "annotate", "switch.conf", "--color=always" },
    { "field", "switch.conf", "table", "pipe.acl", "size" },
    { "field", "switch.conf", "./switch.conf", "table", "pipe.acl", "size" },
    { "summary", "switch.conf", "switch.conf" },
    { "actions", "switch.conf", ".", "--where", "name=a" },
    { "budget", "switch.conf", "switch.conf", "--against", "switch.conf", "--json" },
    { "check", "switch.conf", "--baseline", "switch.conf", "--summary", "--all" },
    { "check", "--sarif", "switch.conf" },
    { "stages", "switch.conf", "--by", "entries", "--budget=switch.conf" },
    { "field", "switch.conf", "--color", "auto", "action", "--", "count", "tableName" },
    { "names", "switch.conf", "--kind", "counter", "--csv" },
    { "names", "--kind=header", "--json", "switch.conf" },
    { "normalize", "--", "--hdr.a", "hdr.b" },
    { "check", "switch.conf", "--ignore", "BF304,BF305", "--ignore=BF201", "b", "--fail-on", "warning" },
    { "check", "--explain", "all", "--json" },
    { "check", "--explain=duplicate-table-name" },
    { "diff", "switch.conf", "--only=phv", "--", "switch.conf" },
    { "tables", "switch.conf", "--sort", "-size", "--filter", "--json", "-n", "3", "--csv" },
    { "tables", "--sort=-size", "-n3", "--filter=^a", "--color=auto", "--json", "switch.conf" },
    { "handles", "switch.conf", "--sort=stageStart" },
    { "help", "show" },
    { "help", "--color=never", "--", "tables" },
    { "--help", "tables" },
    { "--version" },
};

class CompletionAgrees : public InFolder {
  protected:
    CompletionAgrees() { modelOf( completeContext() ); }

    /// The word that is typed, as completion would finish it, all ways.
    static std::vector<String> finished( Candidates const& candidates ) {
        std::vector<String> words;
        for( String const& word : candidates.words )
            words.push_back( candidates.written + word );
        return words;
    }
};

ParsedLine parsedLine( Line const& line ) {
    LineParser parser( program() );
    for( String const& word : line )
        parser.take( word );
    return std::move( parser ).finish();
}

Line withLast( Line line, std::size_t size, String const& last ) {
    line.resize( size );
    line.push_back( last );
    return line;
}

/// Whether completion can know the word.
bool isListed( Word const& word ) {
    if( !word.valueAt )
        return word.role != Role::endOfOptions;
    ValueKind const kind = word.type().kind;
    return kind != ValueKind::text && kind != ValueKind::number && kind != ValueKind::file &&
           kind != ValueKind::handle && kind != ValueKind::condition;
}

TEST_F( CompletionAgrees, LinesAreUnderstood ) {
    for( Line const& line : lines )
        EXPECT_FALSE( parsedLine( line ).error ) << testing::PrintToString( line );
}

TEST_F( CompletionAgrees, OnWhatEveryWordOfALineIs ) {
    for( Line const& line : lines ) {
        auto const meaning = parsedLine( line );
        for( std::size_t i = 0; i < line.size(); ++i ) {
            Word const& word = meaning.words[ i ];
            Candidates const candidates = candidatesFor( program(), withLast( line, i, word.text ) );
            SCOPED_TRACE( testing::PrintToString( line ) + " at " + word.text );
            bool const isFile = word.valueAt && word.type().kind == ValueKind::file;
            EXPECT_EQ( candidates.files, isFile );
            if( isListed( word ) ) {
                EXPECT_THAT( finished( candidates ), testing::Contains( word.text ) );
            } else if( word.valueAt && word.type().kind != ValueKind::handle ) {
                EXPECT_THAT( candidates.words, testing::IsEmpty() );
            }
        }
    }
}

TEST_F( CompletionAgrees, OnTheFirstLettersOfEveryWord ) {
    for( Line const& line : lines ) {
        auto const meaning = parsedLine( line );
        for( std::size_t i = 0; i < line.size(); ++i ) {
            Word const& word = meaning.words[ i ];
            std::size_t const end = word.valueAt || word.role == Role::endOfOptions ? 0 : word.text.size();
            for( std::size_t size = 1; size < end; ++size ) {
                Line const typed = withLast( line, i, word.text.substr( 0, size ) );
                EXPECT_THAT( finished( candidatesFor( program(), typed ) ), testing::Contains( word.text ) )
                    << testing::PrintToString( typed );
            }
        }
    }
}

TEST_F( CompletionAgrees, ToOfferNothingThatTheCommandRefuses ) {
    std::size_t offers = 0;
    for( Line const& line : lines ) {
        for( std::size_t i = 0; i <= line.size(); ++i ) {
            for( char const* const typed : { "", "-", "--", "--sort=", "--color=", "--ignore=" } ) {
                for( String const& word :
                     finished( candidatesFor( program(), withLast( line, i, typed ) ) ) ) {
                    if( !word.starts_with( typed ) )
                        continue; // the shell does not offer it
                    auto const meaning = parsedLine( withLast( line, i, word ) );
                    bool const isRefused = meaning.error && meaning.error->position == i;
                    EXPECT_FALSE( isRefused ) << testing::PrintToString( withLast( line, i, word ) );
                    ++offers;
                }
            }
        }
    }
    EXPECT_GT( offers, 1000U );
}

TEST_F( CompletionAgrees, ThatNothingBehindTwoDashesIsAnOption ) {
    for( Line const& line : lines ) {
        auto const end = std::find( line.begin(), line.end(), "--" );
        if( end == line.end() || *std::prev( end ) == "--filter" )
            continue;
        auto const size = static_cast<std::size_t>( end - line.begin() ) + 1;
        EXPECT_THAT( candidatesFor( program(), withLast( line, size, "--" ) ).words,
                     testing::Not( testing::Contains( "--help" ) ) );
    }
}

TEST_F( CompletionAgrees, ThatAnOptionComesOnce ) {
    auto const offered = []( Line const& line ) { return candidatesFor( program(), line ).words; };
    EXPECT_THAT( offered( { "tables", "c", "--sort=name", "-n2", "--" } ),
                 testing::AllOf( testing::Contains( "--filter" ),
                                 testing::Not( testing::Contains( "--sort" ) ),
                                 testing::Not( testing::Contains( "-n" ) ) ) );
    EXPECT_THAT( offered( { "tables", "c", "--json", "--" } ), testing::Not( testing::Contains( "--csv" ) ) );
    EXPECT_THAT( offered( { "check", "--ignore", "BF304", "--" } ), testing::Contains( "--ignore" ) );
}

} // namespace
