#pragma once

#include "windows/com/WindowsApi.h"

namespace windows::server {

/// ext_ConnectMode and ext_DisconnectMode, as C passes them.
using ExtConnectMode = int;
using ExtDisconnectMode = int;

/// {B65AD801-ABAF-11D0-BB8B-00A0C90F2744}, of the type library of the add-in designer.
inline constexpr IID IID_IDTExtensibility2 = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

/// The interface by which hosts call add-ins, in the order of its table. Its numbers for late binding are 1
/// to
/// 5. (host/addin.h has what the system sees of it.)
class IDTExtensibility2 : public IDispatch {
 public:
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, ExtConnectMode mode,
                                                 IDispatch* addInInst, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(ExtDisconnectMode mode, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;

 protected:
  ~IDTExtensibility2() = default;
};

}  // namespace windows::server
