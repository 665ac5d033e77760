// From the file to the deck: the stream, the objects in it, the slides in their order.

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "ppt/CompoundStreams.h"
#include "ppt/Deck.h"
#include "ppt/DrawingReader.h"
#include "ppt/Failure.h"
#include "ppt/PersistObjects.h"
#include "ppt/Text.h"

namespace ppt {
namespace {

constexpr std::string_view UserStream = "Current User";
constexpr std::string_view DocumentStream = "PowerPoint Document";
/// Beside the version of PowerPoint 95 ([MS-PPT] 2.1.6).
constexpr std::string_view DualStorage = "PP97_DUALSTORAGE";

struct Streams {
  std::string user;
  std::string document;
};

Streams streamsOf(std::string_view bytes) {
  const CompoundStreams file(bytes);
  const std::string_view storage = file.has(DualStorage) ? DualStorage : std::string_view();
  if (file.has("EncryptedPackage")) {
    fail("it is encrypted. Remove its password in PowerPoint and save it again");
  }
  auto user = file.read(UserStream, storage);
  auto document = file.read(DocumentStream, storage);
  if (!user || !document) {
    if (file.has("PP40")) fail("it is of PowerPoint 95. Save it in PowerPoint 97 or later first");
    fail("it is an OLE compound file, but no presentation");
  }
  return {std::move(*user), std::move(*document)};
}

/// [MS-PPT] 2.3.2.
std::size_t lastEdit(const Record& user) {
  constexpr std::uint32_t Encrypted = 0xF3D1C4DF;
  if (user.type != type::CurrentUser) failDamaged("where its last edit lies is not said");
  if (user.numbers().little32(4) == Encrypted) {
    fail("it is encrypted. Remove its password in PowerPoint and save it again");
  }
  return user.numbers().little32(8);
}

class DeckReader {
 public:
  explicit DeckReader(const Streams& streams)
      : objects_(streams.document, lastEdit(recordAt(streams.user, 0))) {}

  Deck read() {
    const Record document = objects_.take(objects_.document());
    if (document.type != type::Document) failDamaged("its document is not where it should be");
    readPrograms(firstRecord(document.body, type::ExternalObjects));
    Deck deck;
    // [MS-PPT] 2.4.14.1 to 2.4.14.6.
    constexpr std::uint32_t Slides = 0;
    constexpr std::uint32_t Masters = 1;
    constexpr std::uint32_t Notes = 2;
    forEachRecord(document.body, [&](const Record& record) {
      if (record.type == type::DocumentInfoList) deck.tags = tagsIn(firstRecord(record.body, type::Tags));
      if (record.type == type::SlideList && record.instance == Slides) readSlides(record, deck.slides);
    });
    // What they take of the bounds is what the slides have left.
    forEachRecord(document.body, [&](const Record& record) {
      if (record.type != type::SlideList) return;
      if (record.instance == Masters) readPages(record, deck.masters);
      if (record.instance == Notes) readPages(record, deck.notes);
    });
    return deck;
  }

 private:
  /// [MS-PPT] 2.10.
  void readPrograms(const Record& list) {
    constexpr std::uint32_t ProgramString = 2;
    forEachRecord(list.body, [&](const Record& object) {
      if (object.type != type::EmbeddedObject && object.type != type::LinkedObject) return;
      std::string& program = programs_[firstRecord(object.body, type::Object).numbers().little32(8)];
      forEachRecord(object.body, [&](const Record& part) {
        if (part.type == type::String && part.instance == ProgramString) program = textOfUtf16(part.body);
      });
    });
  }

  /// A list of slides, behind each the texts of its placeholders ([MS-PPT] 2.4.14.3).
  void readSlides(const Record& list, std::vector<Slide>& slides) {
    std::optional<std::uint32_t> slide;
    Surroundings surroundings{{}, programs_, shapesLeft_};
    const auto finish = [&] {
      if (slide) slides.push_back(readSlide(*slide, surroundings));
      surroundings.outline.clear();
    };
    forEachRecord(list.body, [&](const Record& record) {
      if (record.type == type::SlidePersist) {
        finish();
        slide = record.numbers().little32(0);
      } else {
        addText(record, surroundings.outline);
      }
    });
    finish();
  }

  Slide readSlide(std::uint32_t id, const Surroundings& surroundings) {
    const Record record = objects_.take(id);
    if (record.type != type::Slide) failDamaged("a slide is not where it should be");
    return {tagsIn(firstRecord(record.body, type::Tags)),
            shapesIn(firstRecord(record.body, type::Drawing), surroundings)};
  }

  /// Masters or notes.
  void readPages(const Record& list, std::vector<Slide>& pages) {
    forEachRecord(list.body, [&](const Record& record) {
      if (record.type != type::SlidePersist) return;
      try {
        const Record page = objects_.take(record.numbers().little32(0));
        const bool isKnown =
            page.type == type::MainMaster || page.type == type::Slide || page.type == type::Notes;
        if (!isKnown) return;
        pages.push_back({tagsIn(firstRecord(page.body, type::Tags)),
                         shapesIn(firstRecord(page.body, type::Drawing), {{}, programs_, shapesLeft_})});
      } catch (const basic::Error&) {  // no link lies in one: the slides are read all the same
      }
    });
  }

  PersistObjects objects_;
  std::map<std::uint32_t, std::string> programs_;
  /// What is known of a shape takes ten times the room of the smallest one in the file.
  std::size_t shapesLeft_ = 200'000;
};

}  // namespace

Deck readDeck(std::string_view bytes) {
  const Streams streams = streamsOf(bytes);
  return DeckReader(streams).read();
}

}  // namespace ppt
