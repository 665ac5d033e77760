#pragma once

#include <memory>

#include "deck/objects/Presentation.h"

namespace deck {

/// A chart on a slide with its application and datasheet in one, for there is
/// nothing else to them. Whether it can be refilled is seen when its datasheet is
/// asked for.
class Chart final : public PowerPoint::OLEFormat,
                    public MSGraph::Chart,
                    public MSGraph::Application,
                    public MSGraph::DataSheet,
                    public std::enable_shared_from_this<Chart> {
 public:
  /// `frame` is the chart's p:graphicFrame.
  Chart(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex, pugi::xml_node frame)
      : presentation_(std::move(presentation)), slideIndex_(slideIndex), frame_(frame) {}

  [[nodiscard]] std::string ProgID() const override { return "MSGraph.Chart.8"; }
  [[nodiscard]] std::shared_ptr<MSGraph::Chart> Object() override { return shared_from_this(); }
  [[nodiscard]] std::shared_ptr<MSGraph::Application> Application() override { return shared_from_this(); }
  [[nodiscard]] std::shared_ptr<MSGraph::DataSheet> DataSheet() override;
  [[nodiscard]] bool IsLinked() const override { return static_cast<bool>(linkedData()); }
  void BreakLink() override;
  [[nodiscard]] MSGraph::Table Cells() const override;
  void Cells(const MSGraph::Table& table) override;
  void Check(const MSGraph::Table& table) const override;
  void Restore() override;

 private:
  template <typename Step>
  auto explain(const Step& step) const;
  [[nodiscard]] RefillableChart& chart() const;
  /// The part of the chart, of whatever kind; null when it is missing.
  [[nodiscard]] opc::Part* part() const;
  /// c:externalData that leads out of the deck; null without.
  [[nodiscard]] pugi::xml_node linkedData() const;

  std::shared_ptr<Presentation> presentation_;
  std::int32_t slideIndex_;
  pugi::xml_node frame_;
};

}  // namespace deck
