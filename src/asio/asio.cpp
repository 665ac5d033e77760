// The parts of Asio and Beast that are no templates, compiled once instead of in every file
// that includes them.
#include <boost/asio/impl/src.hpp>
#include <boost/beast/src.hpp>
