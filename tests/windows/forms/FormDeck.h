#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "basic/Strings.h"
#include "pages/OpenDeck.h"
#include "pages/frmAbout.h"
#include "pages/frmOfflineCopy.h"
#include "pages/modConnectionPages.h"
#include "windows/forms/Screen.h"

namespace windows::test {

/// Remembers what is shown.
struct ShownForms final : ::Forms::View {
  explicit ShownForms(forms::FormView& on) : view(on) {}
  [[nodiscard]] bool Docks() const override { return view.Docks(); }
  void Show(const std::shared_ptr<::Forms::Form>& form, ::Forms::Placement placement,
            std::function<void(::Forms::Result)> closed) override {
    shown = form;
    view.Show(form, placement, [this, closed](::Forms::Result how) {
      result = how;
      closed(how);
    });
  }
  void Changed(::Forms::Form& form, const ::Forms::Changes& changes) override { view.Changed(form, changes); }
  void Complain(::Forms::Form& form, const ::Forms::Control& control) override {
    view.Complain(form, control);
  }
  void Focus(::Forms::Form& form, const ::Forms::Control& control) override { view.Focus(form, control); }
  void Close(::Forms::Form& form, ::Forms::Result how) override { view.Close(form, how); }
  void ChooseFile(::Forms::Form& form, std::string_view title, const std::vector<::Forms::FileKind>& kinds,
                  std::function<void(std::optional<std::string>)> chosen) override {
    view.ChooseFile(form, title, kinds, std::move(chosen));
  }
  void ChooseFolder(::Forms::Form& form, std::string_view title,
                    std::function<void(std::optional<std::string>)> chosen) override {
    view.ChooseFolder(form, title, std::move(chosen));
  }
  forms::FormView& view;
  std::shared_ptr<::Forms::Form> shown;
  std::optional<::Forms::Result> result;
};

/// A deck in which each form can be opened by its name, on a screen.
struct FormDeck : LF2000::OpenDeck {
  FormDeck() { machine.UseForms(&told); }
  void TestBody() override {}

  void open(const std::string& name) {
    using LF2000::modPropertyPages::Page;
    if (name == "frmAbout") return std::make_shared<LF2000::frmAbout>()->Open();
    if (name == "frmOfflineCopy") return std::make_shared<LF2000::frmOfflineCopy>(presentation)->Open();
    if (name == "frmTextConnection") return openNew(LF2000::ConnectionKind::TextFile);
    if (name == "frmExcelConnection") return openNew(LF2000::ConnectionKind::Excel);
    if (name == "frmDatabaseConnection") return openNew(LF2000::ConnectionKind::Database);
    if (name == "frmDataField") return Open(Page::DataField, {AddField("p1 Price", 1)});
    if (name == "frmDataObject") return Open(Page::DataObject, {AddPicture("Photo")});
    if (name == "frmGraph") {
      slide.AddChart("Chart 1", "001");
      return Open(Page::Graph, {slide.shapes.back()});
    }
    if (name == "frmNotLinkable") {
      Add("Line");
      window->shapes = {Add("line")};
      return LF2000::modPages::OpenNotLinkable(presentation);
    }
    if (name == "frmClock") return Open(Page::Clock, {AddField("p1 Price", 1)});
    if (name == "frmSlide") return Open(Page::Slide, {});
    if (name == "frmSlideShow") return Open(Page::SlideShow, {});
    if (name == "frmDistribution") return Open(Page::Distribution, {});
    if (name == "frmLinkByNames") {
      Add("Price 2");
      Add("Item 3");
      return LF2000::modPages::OpenLinkByNames(presentation);
    }
    ASSERT_EQ(name, "frmFillWithRows");
    window->shapes = {AddField("p1 Price", 1), AddField("p2 Price", 2), AddField("p2 Item", 2, "Item")};
    LF2000::modPages::OpenFillWithRows(presentation);
  }
  void openNew(LF2000::ConnectionKind kind) { LF2000::modConnectionPages::OpenNew(kind, "", presentation); }

  /// What is stored in the deck: the tags of the presentation, of its slide and of its shapes, with "|" for
  /// TABs.
  [[nodiscard]] std::string stored() const {
    std::string all;
    const auto add = [&](const std::string& whose, const fakes::Tags& tags) {
      for (const auto& [name, value] : tags.items) all += whose + " " + name + "=" + value + "\n";
    };
    add("deck", *deck->tags);
    add("slide", *slide.tags);
    for (const auto& shape : slide.shapes) {
      all += shape->name + ": " + LinkOf(shape) + "\n";
    }
    return basic::Replace(all, "\t", "|");
  }

  Screen screen;
  ShownForms told{screen.view};
};

}  // namespace windows::test
