#include "cli/report/Html.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace {

using Bfri::escapedForHtml;
using Bfri::Html;
using Bfri::own;
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

TEST( HtmlMarkup, QuotesOnlyWhereItMust ) {
    Html html;
    html.open( "a", { { "class", own( "b{}", when( true, " c" ) ) },
                      { "href", own( "#t{}", 7 ) },
                      Bfri::titled( "x>\"y" ) } );
    html.text( "n" ).close();
    EXPECT_EQ( std::move( html ).take(), "<a class=\"b c\" href=#t7 title=\"x&gt;&quot;y\">n</a>" );
}

TEST( HtmlMarkup, LeavesOutEndTagsThatHtmlDoesNotNeed ) {
    Html html;
    html.open( "ul" ).leaf( "li", "1" ).leaf( "li", { { "class", "" } }, "2" ).close();
    EXPECT_EQ( std::move( html ).take(), "<ul><li>1<li>2</ul>" );
}

TEST( HtmlMarkup, IsXmlWhereThatIsWanted ) {
    Html svg( Html::Syntax::xml );
    svg.open( "g" ).leaf( "title", "<" ).empty( "rect", { { "x", "1" } } ).close();
    EXPECT_EQ( std::move( svg ).take(), "<g><title>&lt;</title><rect x=\"1\"/></g>" );
}

TEST( HtmlMarkup, IsBalanced ) {
    Html html;
    EXPECT_THROW( html.close(), std::logic_error );
    html.open( "p" );
    EXPECT_THROW( std::move( html ).take(), std::logic_error );
}

} // namespace
