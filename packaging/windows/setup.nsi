; The setup for Windows: for one user, without an administrator, into a folder that he may write, since
; the program's folder holds the client's tables and the lines.
;   makensis -DVERSION=<version> -DFROM=<folder with the files> -DTO=<setup.exe> setup.nsi
; Silent with /S; /D=<folder> as the last word chooses the folder. Exit codes: 3 the program runs, 4 a
; newer version is installed, 5 the folder cannot be written.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
!include MUI2.nsh
!include WordFunc.nsh

!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\OstrelPayroll"

Name "Ostrel Payroll"
OutFile "${TO}"
InstallDir "$LOCALAPPDATA\Programs\Ostrel Payroll"
InstallDirRegKey HKCU "${ENTRY}" "InstallLocation"
RequestExecutionLevel user
ManifestDPIAware true
BrandingText "Ostrel Payroll ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Ostrel Payroll"
VIAddVersionKey "FileDescription" "Ostrel Payroll setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Ostrel Payroll developers"

!define MUI_ICON "../icon/ostrel-payroll.ico"
!define MUI_UNICON "../icon/ostrel-payroll.ico"
!define MUI_WELCOMEPAGE_TEXT "This installs Ostrel Payroll ${VERSION} for you alone.$\r$\n$\r$\nLines, tables and settings that are there stay as they are. The program keeps no copy of the lines before an upgrade by itself; its page on what it promises tells how to make one."
!define MUI_FINISHPAGE_RUN "$INSTDIR\OstrelPayroll.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A running program's file cannot be opened for writing. Asks until it is closed, or ends with 3.
!macro EndTheProgramFirst
  again:
    IfFileExists "$INSTDIR\OstrelPayroll.exe" 0 closed
    ClearErrors
    FileOpen $0 "$INSTDIR\OstrelPayroll.exe" a
    IfErrors 0 free
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Ostrel Payroll is running. End it, then choose Retry." /SD IDCANCEL IDRETRY again
    SetErrorLevel 3
    Quit
  free:
    FileClose $0
  closed:
!macroend

; An older version may not know what a newer one has written.
!macro AskBeforeAnOlderVersion
  ReadRegStr $1 HKCU "${ENTRY}" "DisplayVersion"
  StrCmp $1 "" older_asked
  ${VersionCompare} "$1" "${VERSION}" $2
  StrCmp $2 1 0 older_asked
  MessageBox MB_YESNO|MB_ICONEXCLAMATION|MB_DEFBUTTON2 "Ostrel Payroll $1 is installed, which is newer than ${VERSION}. Go back to the older version?" /SD IDNO IDYES older_asked
  SetErrorLevel 4
  Quit
  older_asked:
!macroend

Section "Ostrel Payroll"
  !insertmacro EndTheProgramFirst
  !insertmacro AskBeforeAnOlderVersion
  ClearErrors
  SetOutPath "$INSTDIR"
  FileOpen $0 "$INSTDIR\setup.try" w
  IfErrors 0 writable
    MessageBox MB_OK|MB_ICONSTOP "$INSTDIR cannot be written. Nothing has been installed." /SD IDOK
    SetErrorLevel 5
    Quit
  writable:
  FileClose $0
  Delete "$INSTDIR\setup.try"
  File /r "${FROM}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Ostrel Payroll.lnk" "$INSTDIR\OstrelPayroll.exe"
  WriteRegStr HKCU "${ENTRY}" "DisplayName" "Ostrel Payroll"
  WriteRegStr HKCU "${ENTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${ENTRY}" "DisplayIcon" "$INSTDIR\OstrelPayroll.exe"
  WriteRegStr HKCU "${ENTRY}" "Publisher" "The Ostrel Payroll developers"
  WriteRegStr HKCU "${ENTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${ENTRY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${ENTRY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${ENTRY}" "NoModify" 1
  WriteRegDWORD HKCU "${ENTRY}" "NoRepair" 1
SectionEnd

; Only what the setup brought, by name: the rest of the folder is the foreman's.
Section "Uninstall"
  !insertmacro EndTheProgramFirst
  !include "${REMOVALS}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Ostrel Payroll.lnk"
  DeleteRegKey HKCU "${ENTRY}"
SectionEnd
