#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "deck/charts/ChartStore.h"
#include "deck/objects/AuthorsCells.h"
#include "deck/objects/Owners.h"
#include "deck/objects/Repair.h"
#include "deck/objects/TagStore.h"
#include "deck/pictures/LivePictures.h"
#include "host/powerpoint.h"
#include "opc/Files.h"
#include "opc/Package.h"
#include "presentationml/ShapeNode.h"

namespace deck {

class Application;

/// Told when something that a screen may show has changed. Slides count from 1;
/// a shape is named by the id of its p:cNvPr. Handlers do not throw.
class ChangeListener {
 public:
  virtual ~ChangeListener() = default;
  virtual void shapeChanged(std::int32_t slideIndex, std::uint32_t shapeId) = 0;
  /// Of a table no more than the text of one cell; rows and columns count from 1.
  virtual void cellChanged(std::int32_t slideIndex, std::uint32_t shapeId, std::int32_t /*row*/,
                           std::int32_t /*column*/) {
    shapeChanged(slideIndex, shapeId);
  }
  virtual void slideHiddenChanged(std::int32_t slideIndex) = 0;
  virtual void linksUpdated() = 0;
};

/// An open presentation over its package. The objects of the object model that
/// it hands out hold their XML node and copy nothing; they keep the presentation
/// alive. Its slides are parsed when it is opened, so a broken one is told then.
class Presentation final : public PowerPoint::Presentation,
                           public std::enable_shared_from_this<Presentation> {
 public:
  /// `path` is the file that Save() writes; empty for a presentation that is no
  /// file yet. `state` is what the file was when the package was read from it.
  /// `damages` is what was repaired in the package, which can then not be saved.
  Presentation(std::unique_ptr<opc::Package> package, std::string path, std::optional<opc::FileState> state,
               std::vector<Damage> damages = {});
  ~Presentation() override;

  [[nodiscard]] std::string FullName() const override;
  [[nodiscard]] bool Saved() const override;
  void Saved(bool saved) override;
  void Save() override;
  void SaveCopyAs(std::string_view fileName) override;
  void Close() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Tags> Tags() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Slides> Slides() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::SlideShowSettings> SlideShowSettings() override;
  void UpdateLinks() override;

  [[nodiscard]] opc::Package& package() const { return *package_; }
  [[nodiscard]] const std::vector<Damage>& damages() const { return damages_; }
  /// What the file was when it was read or written last; nothing when there is none.
  [[nodiscard]] const std::optional<opc::FileState>& fileState() const { return state_; }
  /// The file has another state and, as the caller has seen, the same bytes.
  void acceptFileState(const std::optional<opc::FileState>& state) { state_ = state; }
  /// The presentation part.
  [[nodiscard]] opc::Part& part() const { return *part_; }
  [[nodiscard]] std::int32_t slideCount() const;
  /// Index from 1; out of range is an error.
  [[nodiscard]] opc::Part& slidePart(std::int32_t index) const;
  [[nodiscard]] const presentationml::ShapeIndex& shapesOf(std::int32_t slideIndex) const;
  /// What names the slide in every version of the deck, wherever it stands: the id of its p:sldId.
  [[nodiscard]] std::uint32_t slideId(std::int32_t index) const { return slide(index).id; }
  [[nodiscard]] bool isHidden(std::int32_t slideIndex) const;
  /// The index of the slide to which this relationship of the presentation part leads; nothing when it leads
  /// to none.
  [[nodiscard]] std::optional<std::int32_t> slideByRelationship(std::string_view id) const;
  /// The id of the relationship that leads to the slide of that id; empty without such a slide.
  [[nodiscard]] std::string slideRelationship(std::uint32_t id) const;
  /// The slides of a presentation that is shown or edited (that has a listener) stay as they are. What was
  /// handed out of a slide that goes away, or for a slide behind it, is not to be used any more.
  void duplicateSlide(std::int32_t index);
  void removeSlide(std::int32_t index);
  void moveSlide(std::int32_t index, std::int32_t place);
  /// The shape keeps what it shows and is no longer linked. An error where there is nothing to show.
  void breakLink(std::int32_t slideIndex, pugi::xml_node shape);
  /// Gives a top-level shape another name; an error when another shape of the slide has it, in any case of
  /// letters, and when it is empty.
  void renameShape(std::int32_t slideIndex, pugi::xml_node shape, std::string_view name);
  /// Gives it a name that it had before, whoever else has it.
  void restoreName(std::int32_t slideIndex, pugi::xml_node shape, std::string_view name);
  [[nodiscard]] TagStore& tagStore() { return tags_; }
  [[nodiscard]] const Owners& owners();
  [[nodiscard]] ChartStore& charts() { return charts_; }
  [[nodiscard]] AuthorsCells& authorsCells() { return authorsCells_; }

  /// The shape shows this picture in place of its own. One without a place for a
  /// picture is an error.
  void showPicture(std::int32_t slideIndex, pugi::xml_node shape, pictures::PictureFile picture);
  void showOwnPicture(std::int32_t slideIndex, pugi::xml_node shape);
  /// The linked object of that id shows this picture of its source; what data
  /// name goes before. An error when it is not on the slide or shows no picture.
  void showLinkedObject(std::int32_t slideIndex, std::uint32_t shapeId, pictures::PictureFile picture);
  /// Reads the file of a linked picture anew. Of any other shape nothing is to be
  /// read here. What cannot be read is an error.
  void updateLink(std::int32_t slideIndex, pugi::xml_node shape);
  /// Reads the linked pictures that the deck holds no copy of and that were not read yet. Those that cannot
  /// be read stay empty.
  void loadLinkedPictures();
  void loadLinkedPictures(std::int32_t slideIndex);
  /// The files of the linked pictures that are still empty, as the deck writes them.
  [[nodiscard]] std::vector<std::string> missingPictures() const;

  /// A listener must outlive its subscription.
  void addListener(ChangeListener& listener);
  void removeListener(ChangeListener& listener);
  void addListener(EditListener& listener);
  void removeListener(EditListener& listener);

  /// What the proxies report: the node was changed in the part.
  void noteChange(opc::Part& part);
  void noteShapeChange(std::int32_t slideIndex, pugi::xml_node shape);
  void noteCellChange(std::int32_t slideIndex, pugi::xml_node frame, std::int32_t row, std::int32_t column);
  /// What a chart shows has changed, in parts of its own.
  void noteChartChange(std::int32_t slideIndex, pugi::xml_node frame);
  void noteHiddenChange(std::int32_t slideIndex);

  /// The application that the presentation is open in; null after its closing.
  void attach(Application* application) { application_ = application; }

 private:
  struct SlideEntry {
    opc::Part* part;
    std::uint32_t id;
    std::string relationshipId;
    std::unique_ptr<presentationml::ShapeIndex> shapes;

    void readShapes();
  };

  void loadSlides();
  [[nodiscard]] SlideEntry entryOf(pugi::xml_node sldId) const;
  [[nodiscard]] std::uint32_t freeSlideId() const;
  void removeSlidePart(opc::Part& part);
  void requireNobodyWatches() const;
  [[nodiscard]] const SlideEntry& slide(std::int32_t index) const;
  void write();
  void requireWhole() const;
  /// Reads a linked picture's file, if it can be read.
  void loadLink(std::int32_t slideIndex, pugi::xml_node shape);
  void requirePicture(std::int32_t slideIndex, pugi::xml_node shape) const;
  void tellOfShape(std::int32_t slideIndex, pugi::xml_node shape);
  template <typename Event>
  void notify(const Event& event);
  void tellOfEdit(void (EditListener::*event)(const OwnerId&), pugi::xml_node owner);

  std::unique_ptr<opc::Package> package_;
  std::string path_;
  std::optional<opc::FileState> state_;
  std::vector<Damage> damages_;
  opc::Part* part_ = nullptr;
  std::vector<SlideEntry> slides_;
  TagStore tags_;
  ChartStore charts_;
  AuthorsCells authorsCells_;
  LivePictures pictures_;
  std::optional<Owners> owners_;  // once asked for
  std::vector<ChangeListener*> listeners_;
  std::vector<EditListener*> editListeners_;
  Application* application_ = nullptr;
  bool saved_ = true;
  bool isSaving_ = false;
  bool wroteWhileSaving_ = false;
};

}  // namespace deck
