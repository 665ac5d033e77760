// The module as programs load it: its exports, its object and its end.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "windows/com/Object.h"
#include "windows/com/Text.h"
#include "windows/server/AddIn.h"
#include "windows/support/ScriptedObject.h"
#include "windows/support/Windows.h"

namespace windows {
namespace {

using com::Ptr;
using com::Variant;
using support::ScriptedObject;

constexpr const wchar_t* Settings = L"Software\\VB and VBA Program Settings\\Corvane Lumenfold 2000";

struct Module : testing::Test {
  Module() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    library = LoadLibraryW(com::wide(LF2000_FILE).c_str());
  }
  ~Module() override {
    if (library != nullptr) FreeLibrary(library);
    CoUninitialize();
  }
  template <typename Call>
  Call exported(const char* name) const {
    return test::exported<Call>(library, name);
  }
  HMODULE library = nullptr;
};

TEST_F(Module, LoadsConnectsAndCanBeUnloadedWhenNobodyHoldsIt) {
  ASSERT_NE(library, nullptr) << "error " << GetLastError();
  const auto getClassObject =
      exported<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
  const auto canUnload = exported<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow");
  ASSERT_NE(getClassObject, nullptr);
  ASSERT_NE(canUnload, nullptr);
  EXPECT_EQ(canUnload(), S_OK);

  Ptr<IClassFactory> factory;
  EXPECT_EQ(getClassObject(IID_IDispatch, IID_IClassFactory, reinterpret_cast<void**>(factory.out())),
            CLASS_E_CLASSNOTAVAILABLE);
  ASSERT_EQ(getClassObject(server::CLSID_Connect, IID_IClassFactory, reinterpret_cast<void**>(factory.out())),
            S_OK);
  Ptr<server::IDTExtensibility2> addIn;
  ASSERT_EQ(
      factory->CreateInstance(nullptr, server::IID_IDTExtensibility2, reinterpret_cast<void**>(addIn.out())),
      S_OK);
  factory = {};
  EXPECT_EQ(canUnload(), S_FALSE);

  // A host of a version that nobody has accepted: the add-in says so in its log, which lies beside it.
  RegSetKeyValueW(HKEY_CURRENT_USER, (std::wstring(Settings) + L"\\Info").c_str(), L"Debug", REG_SZ, L"True",
                  5 * sizeof(wchar_t));
  const auto application = ScriptedObject::make({{L"Version", "11.0"}});
  EXPECT_EQ(addIn->OnConnection(application.get(), 1, nullptr, nullptr), S_OK);
  EXPECT_EQ(addIn->OnDisconnection(1, nullptr), S_OK);
  addIn = {};
  EXPECT_EQ(canUnload(), S_OK);
  RegDeleteTreeW(HKEY_CURRENT_USER, Settings);

  std::filesystem::path file(LF2000_FILE);
  file.replace_extension(".dbg");
  std::ifstream stream(file);
  const std::string log{std::istreambuf_iterator<char>(stream), {}};
  EXPECT_NE(log.find("is not compatible with the installed version"), std::string::npos) << log;
  EXPECT_NE(log.find("Program shut down."), std::string::npos);
  stream.close();
  std::filesystem::remove(file);
}

TEST_F(Module, RegistersAndUnregisters) {
  ASSERT_NE(library, nullptr);
  using Register = HRESULT(STDAPICALLTYPE*)();
  using Install = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);
  EXPECT_EQ(exported<Register>("DllRegisterServer")(), S_OK);
  constexpr const wchar_t* AddIn = L"Software\\Microsoft\\Office\\PowerPoint\\Addins\\LF2000.Connect";
  EXPECT_TRUE(test::hasKey(AddIn));
  EXPECT_EQ(exported<Register>("DllUnregisterServer")(), S_OK);
  EXPECT_FALSE(test::hasKey(AddIn));
  EXPECT_EQ(exported<Install>("DllInstall")(TRUE, L"user"), S_OK);
  EXPECT_EQ(exported<Install>("DllInstall")(FALSE, L"user"), S_OK);
  EXPECT_FALSE(test::hasKey(AddIn));
}

}  // namespace
}  // namespace windows
