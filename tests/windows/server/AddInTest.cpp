// The add-in as a host loads it, calls it and lets it go.

#include "windows/server/AddIn.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modVersionSpecific.h"
#include "fakes/FakeServices.h"
#include "windows/com/Object.h"
#include "windows/server/ClassFactory.h"
#include "windows/support/ScriptedObject.h"

namespace windows::server {
namespace {

using com::Variant;
using support::anyClass;
using support::EventSource;
using support::handedOut;
using support::ScriptedObject;

constexpr IID ApplicationEvents = {
    0x914934C2, 0x5A91, 0x11CF, {0x87, 0x00, 0x00, 0xAA, 0x00, 0x60, 0x26, 0x3B}};
constexpr DISPID PresentationSave = 2005;
constexpr DISPID PresentationOpen = 2006;

struct Apartment {
  Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~Apartment() { CoUninitialize(); }
};

struct FakeSurroundings final : Surroundings {
  explicit FakeSurroundings(const host::Services& services) : machine(services) {}
  host::Services services() override { return machine; }
  host::Services machine;
};

struct AddInServer : testing::Test {
  Apartment apartment;
  fakes::Machine machine;
  const host::Services services = host::Current();
  const long before = com::liveObjects;
  EventSource* events = nullptr;
  int saves = 0;
  std::vector<bool> saved;
  bool raisesEvents = true;
  com::Ptr<IDTExtensibility2> addIn;

  AddInServer() {
    machine.settings.info["Debug"] = "True";
    machine.settings.info["HideUserInterface"] = "1";
    addIn = create();
  }
  ~AddInServer() override {
    addIn = {};
    EXPECT_EQ(com::liveObjects, before) << "somebody still holds an object";
  }

  /// As a program that knows the class creates it.
  com::Ptr<IDTExtensibility2> create() const {
    const auto factory = com::Ptr<ClassFactory>::taking(
        new ClassFactory([this] { return std::make_unique<FakeSurroundings>(services); }));
    com::Ptr<IDTExtensibility2> created;
    DWORD cookie = 0;
    EXPECT_EQ(CoRegisterClassObject(CLSID_Connect, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                    &cookie),
              S_OK);
    EXPECT_EQ(CoCreateInstance(CLSID_Connect, nullptr, CLSCTX_INPROC_SERVER, IID_IDTExtensibility2,
                               reinterpret_cast<void**>(created.out())),
              S_OK);
    CoRevokeClassObject(cookie);
    return created;
  }
  com::Ptr<IDispatch> host(const char* version = "9.0.2716") {
    auto* application = new ScriptedObject(
        {{L"Version", version}, {L"Presentations", ScriptedObject::make({{L"Count", 1}})}});
    if (raisesEvents) events = &application->withEvents(ApplicationEvents);
    return com::Ptr<IDispatch>::taking(application);
  }
  com::Ptr<IDispatch> entry() { return ScriptedObject::make({{L"ProgId", "LF2000.Connect"}}); }
  com::Ptr<IDispatch> presentation() {
    return ScriptedObject::make({{L"FullName", "C:\\decks\\board.ppt"},
                                 {L"Saved",
                                  [this](const auto& a) {
                                    if (!a.empty()) saved.push_back(a[0].flag());
                                    return 0;
                                  }},
                                 {L"Save",
                                  [this] {
                                    if (++saves < 5) events->raise(PresentationSave, self());
                                  }},
                                 {L"Tags", ScriptedObject::make({{L"Count", 0}, {L"Add", [] {}}})}});
  }
  std::vector<Variant> self() {
    std::vector<Variant> arguments;
    arguments.push_back(handedOut(deck));
    return arguments;
  }
  HRESULT connect(const com::Ptr<IDispatch>& application) {
    return addIn->OnConnection(application.get(), 1, entry().get(), nullptr);
  }
  HRESULT disconnect() { return addIn->OnDisconnection(0, nullptr); }
  std::string log() { return machine.files.files["/addin/lumenfold.dbg"].content; }
  bool logged(const std::string& text) { return log().find(text) != std::string::npos; }

  com::Ptr<IDispatch> deck;
};

TEST_F(AddInServer, LoadsHearsEventsAndGoes) {
  const auto application = host();
  EXPECT_EQ(connect(application), S_OK);
  EXPECT_TRUE(logged("Information  LF2000.Connect\r\n")) << log();
  ASSERT_NE(events, nullptr);
  EXPECT_EQ(events->sinks(), 1U);
  EXPECT_EQ(addIn->OnStartupComplete(nullptr), S_OK);
  EXPECT_TRUE(logged("OnStartupComplete"));

  deck = presentation();
  events->raise(PresentationOpen, self());
  EXPECT_TRUE(logged("C:\\decks\\board.pptgppApp_PresentationOpen:")) << log();
  EXPECT_EQ(saved, std::vector<bool>{true});
  events->raise(PresentationSave, self());
  EXPECT_EQ(saves, 1) << "saving within the event raises it again, which saves no more";

  events->raise(PresentationOpen, {});
  std::vector<Variant> text;
  text.emplace_back("no presentation");
  events->raise(PresentationOpen, std::move(text));
  events->raise(4711, {});
  EXPECT_EQ(events->results, std::vector<HRESULT>(events->results.size(), S_OK));

  EXPECT_EQ(disconnect(), S_OK);
  EXPECT_EQ(events->sinks(), 0U);
  EXPECT_EQ(disconnect(), S_OK);
  EXPECT_TRUE(logged("Program shut down."));
  EXPECT_EQ(connect(application), S_OK);
  EXPECT_EQ(events->sinks(), 1U) << "it may be loaded again";
  EXPECT_EQ(disconnect(), S_OK);
  deck = {};
}

TEST_F(AddInServer, IsCalledLateBoundAsWell) {
  const auto application = host();
  wchar_t name[] = L"onconnection";
  LPOLESTR names = name;
  DISPID id = 0;
  ASSERT_EQ(addIn->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), S_OK);
  const Variant arguments[] = {Variant(), handedOut(entry()), Variant(1), handedOut(application)};
  VARIANT reversed[] = {arguments[0].raw(), arguments[1].raw(), arguments[2].raw(), arguments[3].raw()};
  DISPPARAMS parameters{reversed, nullptr, 4, 0};
  EXPECT_EQ(addIn->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(events->sinks(), 1U);
  parameters.cArgs = 3;
  EXPECT_EQ(addIn->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(addIn->Invoke(6, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  disconnect();
}

TEST_F(AddInServer, AHostWithoutEventsIsNoted) {
  raisesEvents = false;
  EXPECT_EQ(connect(host()), S_OK);
  EXPECT_TRUE(logged("Information  No events of the presentation program: ")) << log();
  EXPECT_FALSE(LF2000::modVersionSpecific::StartupFailure) << "and the start goes on";
  disconnect();
}

TEST_F(AddInServer, AHostThatAnswersNothingLeavesItInert) {
  EXPECT_EQ(connect(ScriptedObject::make({})), S_OK);
  EXPECT_EQ(addIn->OnConnection(nullptr, 1, nullptr, nullptr), S_OK);
  EXPECT_EQ(disconnect(), S_OK);
}

TEST_F(AddInServer, BeginsAfreshWheneverItIsLoaded) {
  const auto application = host();
  connect(application);
  LF2000::modErrors::SlideShowRunning = true;  // it is let go in a running show
  disconnect();
  addIn = {};
  addIn = create();
  connect(application);
  EXPECT_FALSE(LF2000::modErrors::SlideShowRunning);
  disconnect();
}

TEST_F(AddInServer, IsLetGoWhileAHandlerWaits) {
  const auto application = host();
  connect(application);
  deck = presentation();
  machine.loop.onDoEvents = [this] {
    EXPECT_EQ(disconnect(), S_OK);
    EXPECT_EQ(disconnect(), S_OK);
  };
  events->raise(PresentationOpen, self());
  EXPECT_TRUE(machine.messageBox.shown.empty()) << "what fails because of that is nobody's business";
  EXPECT_EQ(events->sinks(), 0U) << "gone when the handler has ended";
  EXPECT_TRUE(saved.empty()) << "what would have followed is left out";
  EXPECT_FALSE(machine.loop.HasTimers());

  machine.loop.onDoEvents = [&] {
    connect(application);
    disconnect();
    connect(application);
  };
  connect(application);
  events->raise(PresentationOpen, self());
  EXPECT_EQ(events->sinks(), 1U) << "loaded again in the same wait";
  machine.loop.onDoEvents = {};
  events->raise(PresentationOpen, self());
  EXPECT_EQ(saved, std::vector<bool>{true}) << "and the next time it is as before";
  disconnect();
  deck = {};
}

}  // namespace
}  // namespace windows::server
