// Calls by name, and what comes of their values and failures.

#include "windows/com/Object.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <variant>

#include "basic/Error.h"
#include "support/ErrorOf.h"
#include "windows/com/Bstr.h"
#include "windows/com/Failure.h"
#include "windows/support/ScriptedObject.h"

namespace windows::com {
namespace {

using support::ScriptedObject;

TEST(Object, CallsByNameWithArgumentsInTheirOrder) {
  Class type("Shape");
  std::string stored;
  auto* scripted = new ScriptedObject({
      {L"Join", [](const auto& a) { return a.at(0).text() + "-" + a.at(1).text(); }},
      {L"Text",
       [&](const auto& a) {
         if (!a.empty()) stored = a.at(0).text();
         return stored;
       }},
      {L"Absent", [](const auto& a) { return a.at(0).raw().vt == VT_ERROR; }},
  });
  const Object object(Ptr<IDispatch>::taking(scripted), type);
  EXPECT_EQ(object.text(L"Join", "a", 2), "a-2");
  EXPECT_EQ(object.text(L"Join", 1.5, true), "1.5-True");
  object.put(L"Text", "\xC3\xA4\xF0\x9F\x98\x80");
  EXPECT_EQ(object.text(L"Text"), "\xC3\xA4\xF0\x9F\x98\x80");
  EXPECT_EQ(scripted->kinds.at(2), DISPATCH_PROPERTYPUT);
  EXPECT_TRUE(object.get(L"Absent", Missing{}).flag());
  EXPECT_EQ(scripted->lookups, 3) << "a name is looked up once";

  const Object another(ScriptedObject::make({{L"Join", "b"}}), type);
  EXPECT_EQ(another.text(L"Join"), "b") << "once for all objects of a class";
}

TEST(Object, KeepsItsObjectAsLongAsItIsNeeded) {
  const long before = liveObjects;
  Class type("Shape");
  {
    Class inner("TextFrame");
    const Object object(
        ScriptedObject::make({{L"TextFrame", [&] { return Object(ScriptedObject::make({}), inner); }},
                              {L"Nothing", Object()}}),
        type);
    EXPECT_EQ(liveObjects, before + 1);
    const Object frame = object.object(inner, L"TextFrame");
    EXPECT_EQ(liveObjects, before + 2);
    const Object same = frame;
    EXPECT_EQ(identity(same.dispatch()), identity(frame.dispatch()));
    EXPECT_NE(identity(same.dispatch()), identity(object.dispatch()));
    const auto nothing = [&] { (void)object.object(inner, L"Nothing"); };
    EXPECT_EQ(support::errorNumber(nothing), 91);
    EXPECT_EQ(support::errorOf(nothing), "Shape.Nothing is Nothing");
  }
  EXPECT_EQ(liveObjects, before);
}

/// What an error says of a call that fails so.
basic::Error failing(HRESULT result, EXCEPINFO said = {}) {
  Class type("Shape");
  auto* scripted = new ScriptedObject({{L"Text", [] {}}});
  scripted->failure = result;
  scripted->exception = said;
  const Object object(Ptr<IDispatch>::taking(scripted), type);
  try {
    (void)object.get(L"Text");
  } catch (const basic::Error& error) {
    return error;
  }
  return {0, "", "no error"};
}

HRESULT STDMETHODCALLTYPE fillInLate(EXCEPINFO* info) {
  info->bstrDescription = Bstr("filled in late").release();
  return S_OK;
}

TEST(Object, FailuresHaveTheNumbersOfTheHostLanguage) {
  EXPECT_EQ(failing(E_OUTOFMEMORY).number, 7);
  EXPECT_EQ(failing(DISP_E_TYPEMISMATCH).number, 13);
  EXPECT_EQ(failing(DISP_E_MEMBERNOTFOUND).number, 438);
  EXPECT_EQ(failing(HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE)).number, 462);
  const basic::Error busy = failing(RPC_E_CALL_REJECTED);
  EXPECT_EQ(busy.number, static_cast<std::int32_t>(RPC_E_CALL_REJECTED));
  EXPECT_EQ(busy.source, "LF2000");
  EXPECT_TRUE(busy.description.starts_with("Shape.Text: ")) << busy.description;
  EXPECT_GT(busy.description.size(), std::string("Shape.Text: ").size());

  EXCEPINFO said{};
  said.scode = static_cast<SCODE>(0x800A01A8);  // 424 in the host language's facility
  said.bstrSource = Bstr("Microsoft PowerPoint").release();
  said.bstrDescription = Bstr("Object required").release();
  const basic::Error raised = failing(DISP_E_EXCEPTION, said);
  EXPECT_EQ(raised.number, 424);
  EXPECT_EQ(raised.source, "Microsoft PowerPoint");
  EXPECT_EQ(raised.description, "Object required");

  EXCEPINFO late{};
  late.wCode = 1004;
  late.pfnDeferredFillIn = fillInLate;
  EXPECT_EQ(failing(DISP_E_EXCEPTION, late).number, 1004);
  EXPECT_EQ(failing(DISP_E_EXCEPTION, late).description, "filled in late");
}

TEST(Variant, GoesAndComesBack) {
  for (const basic::Variant& value : std::initializer_list<basic::Variant>{
           basic::Empty{}, basic::Null{}, true, std::int32_t{-5}, 2.5, basic::Decimal{"-12.5"},
           basic::Date{36526.25}, std::string("\xE2\x82\xAC 4"), basic::Binary{0, 255, 7}}) {
    EXPECT_EQ(Variant(value).value(), value) << value.index();
  }
  EXPECT_EQ(Variant(basic::Variant(std::int64_t{7})).value(), basic::Variant(std::int32_t{7}));
  EXPECT_EQ(Variant(basic::Variant(std::int64_t{-9000000000})).value(),
            basic::Variant(basic::Decimal{"-9000000000"}));
  EXPECT_EQ(Variant(basic::Variant(basic::Decimal{"1" + std::string(40, '0')})).value(),
            basic::Variant("1" + std::string(40, '0')))
      << "more digits than a decimal has stay text";
}

TEST(Variant, FollowsReferencesAndRefusesWhatDoesNotConvert) {
  VARIANT inner;
  VariantInit(&inner);
  inner.vt = VT_I2;
  inner.iVal = 12;
  VARIANT outer;
  VariantInit(&outer);
  outer.vt = VT_VARIANT | VT_BYREF;
  outer.pvarVal = &inner;
  EXPECT_EQ(Variant::copyOf(outer).number(), 12);

  EXPECT_EQ(Variant(-1).flag(), true);
  EXPECT_EQ(Variant(0).flag(), false);
  EXPECT_EQ(Variant("2.5").real(), 2.5) << "with a point, whatever the user's settings are";
  EXPECT_THROW((void)Variant("x").number(), basic::Error);
  EXPECT_THROW((void)Variant("x").object(), basic::Error);

  VARIANT cell;
  VariantInit(&cell);
  cell.vt = VT_ERROR;
  cell.scode = static_cast<SCODE>(0x800A07FA);
  EXPECT_EQ(Variant::copyOf(cell).value(), basic::Variant("#N/A"));
}

}  // namespace
}  // namespace windows::com
