#pragma once

#include <random>
#include <string>
#include <vector>

namespace Support {

/// Invents texts that are JSON or nearly: compact, pretty-printed or with white space anywhere; with objects
/// that follow one another and look alike, as those of a context file do; with names that some pass reads and
/// others; and damaged. Equal seeds give equal texts.
class NearlyJson {
  public:
    explicit NearlyJson( unsigned seed ) : random_( seed ) {}

    std::string text();

  private:
    enum class Layout { wild, compact, pretty };

    std::size_t below( std::size_t bound ) { return random_() % bound; }
    char const* oneOf( std::vector<char const*> const& choices ) {
        return choices[ below( choices.size() ) ];
    }

    void value( unsigned depth );
    void number();
    void string();
    void container( bool isObject, unsigned depth );
    void element( bool isObject, unsigned depth );
    void again( std::size_t begin );
    void name();
    void space();
    void line();
    void damage();

    std::mt19937 random_;
    std::string text_;
    Layout layout_ = Layout::wild;
    std::size_t step_ = 0;   // of the indentation
    std::size_t indent_ = 0; // of this line
};

} // namespace Support
