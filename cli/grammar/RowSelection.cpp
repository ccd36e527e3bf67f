#include "cli/grammar/RowSelection.h"

#include <algorithm>

namespace Bfri {

namespace {

void sort( std::vector<Row>& rows, Order const& order ) {
    std::stable_sort( rows.begin(), rows.end(), [ & ]( Row const& a, Row const& b ) {
        Value const& left = valueOf( a, order.field );
        Value const& right = valueOf( b, order.field );
        return order.descending ? right < left : left < right;
    } );
}

} // namespace

void choose( std::vector<Row>& rows, RowSelection const& choice ) {
    if( choice.filter )
        std::erase_if( rows, [ & ]( Row const& row ) {
            return !choice.filter->isIn( valueAs<String>( row, "name" ) );
        } );
    if( choice.where )
        std::erase_if( rows, [ & ]( Row const& row ) { return !choice.where->holds( row ); } );
    if( choice.order )
        sort( rows, *choice.order );
    if( rows.size() > choice.most )
        rows.resize( choice.most );
}

} // namespace Bfri
