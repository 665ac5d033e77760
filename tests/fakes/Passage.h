#pragma once

#include <memory>

#include "fakes/FakePowerPoint.h"
#include "host/addin.h"
#include "host/adodb.h"
#include "host/excel.h"

namespace fakes {

class FormUser;
class FormView;

/// How what stands for a host reaches the system. A program of tests may bring one that leads through a
/// host's own way of calling.
class Passage {
 public:
  virtual ~Passage() = default;
  /// The object by which a host calls the system.
  virtual std::shared_ptr<AddInDesigner::IDTExtensibility2> newEntry() = 0;
  virtual std::shared_ptr<PowerPoint::Application> hand(const std::shared_ptr<Application>& application) = 0;
  virtual std::shared_ptr<PowerPoint::Presentation> hand(
      const std::shared_ptr<Presentation>& presentation) = 0;
  virtual std::shared_ptr<PowerPoint::SlideShowWindow> hand(const std::shared_ptr<Window>& window) = 0;
  virtual std::shared_ptr<AddInDesigner::AddIn> hand(const std::shared_ptr<AddIn>& addIn) = 0;
  /// The factory of objects that lead to those of this one; null for none.
  virtual ADODB::Factory* hand(ADODB::Factory* factory) = 0;
  virtual Excel::Factory* hand(Excel::Factory* factory) = 0;
  /// Who uses the forms that the system shows: those of the view, where it is what the system has.
  virtual FormUser* hand(FormView* view) = 0;
};

/// Null: they are handed as they are.
inline Passage* passage = nullptr;

/// What the system is given for a fake.
template <typename Fake>
auto handed(const Fake& fake) -> decltype(passage->hand(fake)) {
  if (passage == nullptr) return fake;
  return passage->hand(fake);
}

}  // namespace fakes
