// Switch configurations that are no JSON.

#include "tests/platform/ostler/OstlerFixture.h"

namespace {

struct Row {
    std::string text;
    std::string error; ///< "LINE:COLUMN: REASON"
};

class JsonErrors : public OstlerFixture {
  protected:
    void expectError( Row const& row ) {
        SCOPED_TRACE( row.text.substr( 0, 60 ) );
        EXPECT_EQ( read( row.text ).text(), file() + ":" + row.error );
        EXPECT_EQ( context_.status.text(), file() + ":" + row.error );
        EXPECT_EQ( context_.profile.numDevices, 0 );
        EXPECT_TRUE( context_.profile.devices.empty() );
    }
};

TEST_F( JsonErrors, ASyntaxErrorIsNamedWithItsPlace ) {
    Row const rows[] = {
        { "", "1:1: The document is empty." },
        { " \n ", "2:2: The document is empty." },
        { "{", "1:2: Missing a name for object member." },
        { "{\n  \"devices\" [] }", "2:13: Missing a colon after a name of object member." },
        { "{\"devices\":", "1:12: Invalid value." },
        { "{\"devices\":[]", "1:14: Missing a comma or '}' after an object member." },
        { "{\"devices\":[\n1 2]}", "2:3: Missing a comma or ']' after an array element." },
        { "{\"devices\":[]}}", "1:15: The document root must not be followed by other values." },
        { "{\"devices\":[]} x", "1:16: The document root must not be followed by other values." },
        { "{\"devices\":[],}", "1:15: Missing a name for object member." },
        { "{\"devices\":[1,]}", "1:15: Invalid value." },
        { "{devices:[]}", "1:2: Missing a name for object member." },
        { "{'devices':[]}", "1:2: Missing a name for object member." },
        { "// comment\n{\"devices\":[]}", "1:1: Invalid value." },
        { "\xef\xbb\xbf{\"devices\":[]}", "1:1: Invalid value." },
        { "{\"devices\":[\"a]}", "1:17: Missing a closing quotation mark in string." },
        { "{\"devices\":[\"a\nb\"]}", "1:15: Invalid escape character in string." },
    };
    for( Row const& row : rows )
        expectError( row );
}

TEST_F( JsonErrors, ANumberOfAnySizeIsNone ) {
    EXPECT_TRUE(
        read( R"({"devices":[],"x":[0.0000000001e-2147483639,-0,1e-99999999999,4294967296]})" ).ok() );
}

TEST_F( JsonErrors, ANulIsNoPartOfAConfiguration ) {
    using namespace std::string_literals;
    Row const rows[] = {
        { "\0"s, "1:1: The document is empty." },
        { "{\"devices\":[]}\0"s, "1:15: unexpected NUL behind the configuration" },
        { "{\"devices\":[]}\n\0 x"s, "2:1: unexpected NUL behind the configuration" },
        { "{\"devices\":\0[]}"s, "1:12: Invalid value." },
        { "{\"devices\":[\0]}"s, "1:13: Invalid value." },
        { "{\0\"devices\":[]}"s, "1:2: Missing a name for object member." },
        { "{\"dev\0ices\":[]}"s, "1:6: Missing a closing quotation mark in string." },
    };
    for( Row const& row : rows )
        expectError( row );
}

std::string nested( std::size_t levels, std::string const& open, std::string const& close ) {
    std::string text;
    for( std::size_t i = 0; i < levels; ++i )
        text += open;
    for( std::size_t i = 0; i < levels; ++i )
        text += close;
    return text;
}

TEST_F( JsonErrors, AHundredLevelsAreDeepEnough ) {
    std::string const before = "{\"devices\":[],\n\"x\":";
    EXPECT_EQ( read( before + nested( 99, "[", "]" ) + "}" ).text(), "" );
    expectError( { before + nested( 100, "[", "]" ) + "}", "2:104: more than 100 levels of nesting" } );
    expectError( { nested( 101, "[", "]" ), "1:101: more than 100 levels of nesting" } );
    expectError( { nested( 101, "{\"a\":", "}" ), "1:501: more than 100 levels of nesting" } );
    expectError( { std::string( 3000000, '[' ), "1:101: more than 100 levels of nesting" } );
}

TEST_F( JsonErrors, ManyNeighboursAreNotDeep ) {
    std::string text = "{\"devices\":[]";
    for( int i = 0; i < 20000; ++i )
        text += ",\"x\":[{}]";
    EXPECT_EQ( read( text + "}" ).text(), "" );
}

} // namespace
