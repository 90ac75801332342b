; The installer. Built by ./package, which gives:
;   VERSION  the version, three numbers        STAGE   folder with the files, as they are to lie installed
;   OUTPUT   the setup program to write        FILES   the same as a list of macros (see write_installer_list)
;   SIZE     kilobytes installed               FAST    optional: pack quickly
;
; How it works: the files are first unpacked into a work folder inside the target folder. Then each is renamed into its
; place, the one that was there being renamed into the work folder; a journal says what was done. Whatever fails until
; the registration stands is taken back by that journal, and so is what an interrupted run left behind.
Unicode true
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel user ; for one user it needs no rights; scope.nsh asks for them when they are needed
!ifdef FAST
  SetCompressor zlib
!else
  SetCompressor /SOLID lzma
!endif

!include LogicLib.nsh
!include FileFunc.nsh
!include TextFunc.nsh
!include WordFunc.nsh
!include WinVer.nsh
!include nsDialogs.nsh
!include MUI2.nsh
!include "${FILES}"

!define NAME "TovarEx"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TovarEx"
!define WORK "TovarEx.setup" ; the work folder's name
!define LIST "installed.txt"
!define SHORTCUT "$SMPROGRAMS\TovarEx Sample Host.lnk"
!define SETTING_KEY "SOFTWARE\Vantrel\Config"
!define SETTING_VALUE "ArchiverSetting"
!define LIBRARIES_KEY "Software\TovarEx\Archivers"

; Exit codes; 0 is done, 1 given up by the user, 2 stopped.
!define CODE_IN_USE 3
!define CODE_NOT_WRITTEN 4
!define CODE_NOT_REGISTERED 5
!define CODE_NO_RIGHTS 6
!define CODE_FOLDER 7
!define CODE_NOT_REMOVED 8
!define CODE_RUNNING 9

Name "${NAME}"
OutFile "${OUTPUT}"
InstallDir ""
BrandingText "${NAME} ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}.0"
VIAddVersionKey FileDescription "${NAME} setup"
VIAddVersionKey CompanyName "TovarEx project"
VIAddVersionKey LegalCopyright "The TovarEx developers; MIT licence"

Var Scope       ; user or machine
Var ScopeFixed  ; yes when a switch has chosen it
Var FolderGiven ; yes when a switch has chosen the folder
Var Code        ; exit code so far
Var Message     ; what goes with it
Var NoShortcut  ; yes when a switch says so

!include scope.nsh
!include files.nsh
!include registration.nsh
!insertmacro FileFunctions ""
!insertmacro FileFunctions "un."
!insertmacro RegistrationFunctions ""
!insertmacro RegistrationFunctions "un."
!insertmacro ScopeFunctions ""
!insertmacro ScopeFunctions "un."
!include list.nsh
!include journal.nsh
!include install.nsh
!include uninstall.nsh
!include wizard.nsh

; What the last page says above its bar, and nothing of the single steps.
!macro Say TEXT
  SetDetailsPrint textonly
  DetailPrint "${TEXT}"
  SetDetailsPrint none
!macroend

Section
  AddSize ${SIZE}
  !insertmacro Say "Installing..."
  Call Install
  !insertmacro Say "Done."
SectionEnd

Section Uninstall
  !insertmacro Say "Removing..."
  Call un.Uninstall
  !insertmacro Say "Done."
SectionEnd
