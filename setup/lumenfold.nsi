; The installer of the add-in: for the user alone, without an administrator. Logs lie beside the DLLs, so they go
; into a folder that the user can write.
;   makensis -DVERSION=1.2.3 -DDLL64=... -DDLL32=... -DHELP=folder -DCOMPILED_HELP=file -DLICENCES=file -DOUTPUT=file lumenfold.nsi
Target amd64-unicode
Unicode true

!include "FileFunc.nsh"
!include "LogicLib.nsh"

!define TITLE "Corvane Lumenfold 2000"
!define CLASS "{6C4F0B52-9E1D-4B0B-8F0A-5D0F3B7C2000}"
!define CLASS32 "Software\Classes\Wow6432Node\CLSID\${CLASS}"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\${TITLE}"

Name "${TITLE}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\${TITLE}"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
RequestExecutionLevel user
SetCompressor /SOLID lzma
ManifestDPIAware true
ShowInstDetails nevershow
BrandingText "${TITLE} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${TITLE}"
VIAddVersionKey "FileDescription" "${TITLE} Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" ""

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

; A DLL that the presentation program has loaded cannot be replaced.
!macro StopWhenLoaded folder
  ${If} ${FileExists} "${folder}\LF2000.dll"
    ClearErrors
    FileOpen $0 "${folder}\LF2000.dll" a
    ${If} ${Errors}
      MessageBox MB_ICONEXCLAMATION "PowerPoint uses the add-in. Close it, then try again." /SD IDOK
      SetErrorLevel 3
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

Section
  !insertmacro StopWhenLoaded "$INSTDIR\64-bit"
  !insertmacro StopWhenLoaded "$INSTDIR\32-bit"

  SetOutPath "$INSTDIR\64-bit"
  File "/oname=LF2000.dll" "${DLL64}"
  SetOutPath "$INSTDIR\32-bit"
  File "/oname=LF2000.dll" "${DLL32}"
  SetOutPath "$INSTDIR\help"
  File /r "${HELP}\*.*"
  SetOutPath "$INSTDIR"
  File "/oname=help.chm" "${COMPILED_HELP}"
  File "/oname=licences.txt" "${LICENCES}"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  ExecWait '"$SYSDIR\regsvr32.exe" /s "$INSTDIR\64-bit\LF2000.dll"' $0
  ${If} $0 <> 0
    MessageBox MB_ICONSTOP "The add-in could not be registered (error $0)." /SD IDOK
    SetErrorLevel 4
    Quit
  ${EndIf}

  StrCpy $0 1
  ${If} ${FileExists} "$WINDIR\SysWOW64\regsvr32.exe"
    ExecWait '"$WINDIR\SysWOW64\regsvr32.exe" /s "$INSTDIR\32-bit\LF2000.dll"' $0
  ${EndIf}
  ${If} $0 <> 0
    ; No 32-bit program runs here: the entries that 32-bit programs would look up. The others are there already.
    WriteRegStr HKCU "${CLASS32}" "" "${TITLE}"
    WriteRegStr HKCU "${CLASS32}\ProgID" "" "LF2000.Connect"
    WriteRegStr HKCU "${CLASS32}\InprocServer32" "" "$INSTDIR\32-bit\LF2000.dll"
    WriteRegStr HKCU "${CLASS32}\InprocServer32" "ThreadingModel" "Apartment"
  ${EndIf}

  CreateDirectory "$SMPROGRAMS\${TITLE}"
  CreateShortCut "$SMPROGRAMS\${TITLE}\Help.lnk" "$INSTDIR\help.chm"
  CreateShortCut "$SMPROGRAMS\${TITLE}\Licences.lnk" "$INSTDIR\licences.txt"
  CreateShortCut "$SMPROGRAMS\${TITLE}\Uninstall.lnk" "$INSTDIR\uninstall.exe"

  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "${TITLE}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "Corvane"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

Section "Uninstall"
  !insertmacro StopWhenLoaded "$INSTDIR\64-bit"
  !insertmacro StopWhenLoaded "$INSTDIR\32-bit"

  ${If} ${FileExists} "$WINDIR\SysWOW64\regsvr32.exe"
    ExecWait '"$WINDIR\SysWOW64\regsvr32.exe" /s /u "$INSTDIR\32-bit\LF2000.dll"'
  ${EndIf}
  DeleteRegKey HKCU "${CLASS32}"
  DeleteRegKey /ifempty HKCU "Software\Classes\Wow6432Node\CLSID"
  DeleteRegKey /ifempty HKCU "Software\Classes\Wow6432Node"
  ExecWait '"$SYSDIR\regsvr32.exe" /s /u "$INSTDIR\64-bit\LF2000.dll"'

  Delete "$SMPROGRAMS\${TITLE}\Help.lnk"
  Delete "$SMPROGRAMS\${TITLE}\Licences.lnk"
  Delete "$SMPROGRAMS\${TITLE}\Uninstall.lnk"
  RMDir "$SMPROGRAMS\${TITLE}"

  ; What was installed and the logs; what else somebody has put there stays.
  !macro RemoveDll folder
    Delete "$INSTDIR\${folder}\LF2000.dll"
    Delete "$INSTDIR\${folder}\LF2000.dbg"
    Delete "$INSTDIR\${folder}\errors.txt"
    RMDir "$INSTDIR\${folder}"
  !macroend
  !insertmacro RemoveDll "64-bit"
  !insertmacro RemoveDll "32-bit"
  RMDir /r "$INSTDIR\help"
  Delete "$INSTDIR\help.chm"
  Delete "$INSTDIR\licences.txt"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  RMDir "$LOCALAPPDATA\Programs" ; if it is empty now
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey /ifempty HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall"
SectionEnd
