// What is guessed of a text file before an author says so.

#include <gtest/gtest.h>

#include <string>

#include "connections/TextFileGlance.h"
#include "support/ErrorOf.h"
#include "textfile/ReadTextFile.h"

namespace LF2000 {
namespace {

std::string Glance(std::string_view text) {
  const TextFileGlance glance = GlanceAt(BytesOf(text));
  return glance.Encoding + ", " + glance.Delimiter + (glance.HasNames ? ", names" : "");
}

TEST(TextFileGlance, GuessesFromTheBeginning) {
  using namespace std::string_view_literals;
  const std::pair<std::string_view, const char*> cases[] = {
      {"Item\tPrice\nRye bread\t€4.80\nPlum cake\t€4.10\n"sv, "UTF-8, tab, names"},
      {"Rye bread\t€4.80\nPlum cake\t€4.10\n"sv, "UTF-8, tab"},
      {"Item\tPrice\n"sv, "UTF-8, tab, names"},
      {"Rye bread\t€4.80\n"sv, "UTF-8, tab"},
      {"Welcome\nPlease mind the gap\nThank you very much\n"sv, "UTF-8, , names"},
      {"Welcome\n"sv, "UTF-8, "},
      {"Anna;Berlin\nPeter;Paris\nMaria;Wien\n"sv, "UTF-8, semicolon"},
      {"Time,Flight,Gate\n08:10,LH 1234,B12\n08:25,BA 988,A3\n"sv, "UTF-8, comma, names"},
      {"City|Code\nBerlin|BER\nParis|CDG\n"sv, "UTF-8, bar, names"},
      {"State,City\nOpen,Berlin\nState,Paris\n"sv, "UTF-8, comma"},
      {"Prices of May\n\nItem,Size,Price\nRye,1,4.80\nTart,2,3.20\n"sv, "UTF-8, comma, names"},
      {"Caf\xE9;Preis\nTarte;3,20\nEis;1,50\n"sv, "Windows-1252, semicolon, names"},
      {"\xFF\xFEI\0\t\0P\0\n\0a\0\t\0"
       "1\0\n\0"sv,
       "UTF-16, tab, names"},
      {"sep=^\na^b\n1^2\n"sv, "UTF-8, '^', names"},
      {"2023,2024\n1,2\n"sv, "UTF-8, comma"},
      {""sv, "UTF-8, "},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(Glance(text), expected) << text;
  EXPECT_NE(support::errorOf([] { static_cast<void>(Glance("<html>")); }), "");
}

}  // namespace
}  // namespace LF2000
