#pragma once

#include <string_view>

#include "workbook/book/Book.h"

namespace workbook {

/// The cells that the link of an object names: see drawRange(). Throws
/// basic::Error when the workbook has no such.
Book::Target findLinkedItem(const Book& book, std::string_view item);

}  // namespace workbook
