#pragma once

#include <string>

namespace bench {

/// The part of a sheet of ten columns: number, name, money, date and time, share,
/// truth value, city, count, money, digit. Names and cities are shared strings,
/// `names` different ones and 100.
std::string sampleSheet(int rows, int names);

/// A workbook of that sheet, called Data.
std::string sampleBook(const std::string& sheet, int names);

/// Writes a file of the system's folder for temporary files and returns its path.
std::string writeSample(const std::string& name, const std::string& bytes);

}  // namespace bench
