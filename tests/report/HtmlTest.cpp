#include "report/Html.h"

#include <gmock/gmock.h>

namespace {

using Bfri::escapedForHtml;
using Bfri::Html;
using Bfri::markup;
using Bfri::PartIs;
using Bfri::when;

TEST( HtmlText, IsEscaped ) {
    EXPECT_EQ( escapedForHtml( "</script><img src=x onerror='alert(\"&\")'>" ),
               "&lt;/script&gt;&lt;img src=x onerror=&#39;alert(&quot;&amp;&quot;)&#39;&gt;" );
    EXPECT_EQ( escapedForHtml( "表 ü" ), "表 ü" );
}

TEST( HtmlText, ShowsWhatNobodySees ) {
    EXPECT_EQ( escapedForHtml( "a\nb\x7f" ), "a\\x0ab\\x7f" );
    EXPECT_EQ( escapedForHtml( "\xE2\x80\xAE\xE2\x80\x8B\xEF\xBB\xBF" ), "\\u202e\\u200b\\ufeff" );
    EXPECT_EQ( escapedForHtml( "\xff\xed\xa0\x80\xc2\x85" ), "\\xff\\ud800\\x85" )
        << "no UTF-8, a surrogate, C1";
}

TEST( HtmlMarkup, KeepsNumbersAndConstantsAndEscapesTexts ) {
    Html html;
    html.add( R"(<a class="b{}" href=#t{} title="{}">{}</a>)", when( true, " c" ), 7, "x>\"y", "<n>" );
    html.add( "<u style=width:{:.1f}%>{}</u>", 2.25, markup( "<b>{}</b>", "&" ) );
    EXPECT_EQ( std::move( html ).take(), "<a class=\"b c\" href=#t7 title=\"x&gt;&quot;y\">&lt;n&gt;</a>"
                                         "<u style=width:2.2%><b>&amp;</b></u>" );
}

/// Whether a template with one part compiles.
bool mayStand( std::string_view text, PartIs part ) { return Bfri::areWellPlaced( text, { part } ); }

TEST( HtmlMarkup, LetsTextsIntoAttributesThatAreOnlyShown ) {
    EXPECT_TRUE( mayStand( "<a title=\"{}\">", PartIs::text ) );
    EXPECT_TRUE( mayStand( "<a href=#t class=\"a b\">{}</a>", PartIs::text ) );
    EXPECT_TRUE( mayStand( "<a title=\"a > b\">{}</a>", PartIs::text ) );
    for( std::string_view const wrong :
         { "<a title={}>", "<a href=\"{}\">", "<a onclick=\"{}\">", "<{}>", "<a {}>", "<a title=\"\"{}>",
           "<a data-title=\"{}\">", "<a title=\"> href={}" } ) {
        EXPECT_FALSE( mayStand( wrong, PartIs::text ) ) << wrong;
        EXPECT_FALSE( mayStand( wrong, PartIs::markup ) ) << wrong;
    }
    EXPECT_FALSE( mayStand( "<a title=\"{}\">", PartIs::markup ) );
    EXPECT_FALSE( mayStand( "<a href=#t{}{}>", PartIs::own ) ) << "one part for two places";
}

TEST( HtmlMarkup, TakesNumbersAndConstantsEverywhereInWholeTags ) {
    EXPECT_TRUE( mayStand( "<a href=#t{}>", PartIs::own ) );
    EXPECT_TRUE( mayStand( "<a{}>", PartIs::own ) );
    EXPECT_TRUE( mayStand( "<a id={0} for={0}>", PartIs::own ) );
    EXPECT_FALSE( mayStand( "<a id={}", PartIs::own ) ) << "half a tag";
    EXPECT_FALSE( mayStand( "<a id={1}>", PartIs::own ) );
}

} // namespace
