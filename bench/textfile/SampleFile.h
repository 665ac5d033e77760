#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

/// A file of 1,000,000 records of ten fields, some 8 characters each, made once
/// in the build folder. The text is always the same.
inline std::string sampleFile(const std::string& name, char delimiter, std::string_view quote) {
  const std::filesystem::path path = std::filesystem::path(BENCH_FOLDER) / name;
  if (std::filesystem::exists(path)) return path.string();

  constexpr std::string_view Letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 .";
  std::minstd_rand random(1);
  std::string text;
  const auto addRecord = [&](auto field) {
    for (int column = 0; column < 10; ++column) {
      text.append(quote);
      field(column);
      text.append(quote) += column < 9 ? delimiter : '\n';
    }
  };
  addRecord([&](int column) { text += "Column" + std::to_string(column); });
  for (int row = 0; row < 1'000'000; ++row) {
    addRecord([&](int) {
      for (auto length = 3 + random() % 10; length != 0; --length) text += Letters[random() % Letters.size()];
    });
  }
  std::ofstream file(path.string() + ".new", std::ios::binary);
  file << text;
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path.string());
  std::filesystem::rename(path.string() + ".new", path);
  return path.string();
}
