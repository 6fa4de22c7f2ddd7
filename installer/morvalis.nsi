; The installer for Windows. It lays modules, presets and pictures into a folder, tells the module
; where the pictures are, and puts the module beside the other filters of each editor that it finds.
;   makensis -DVERSION=... -DSTAGED=... -DREMOVE=... -DOUTPUT=... morvalis.nsi
; STAGED: the folder that the zip is made of; REMOVE: what the uninstaller takes away of it.
; Silent: /S, with the folder in /D=...

Unicode true
Target amd64-unicode
SetCompressor /SOLID zlib
ManifestDPIAware true

!include LogicLib.nsh
!include Sections.nsh
!include FileFunc.nsh

Name "Morvalis ${VERSION}"
Icon "../resources/icons/101-module.ico"
UninstallIcon "../resources/icons/101-module.ico"
BrandingText "Morvalis ${VERSION}"
OutFile "${OUTPUT}"
; Those who may write for the whole machine are asked for it, others install for themselves.
RequestExecutionLevel highest
ShowInstDetails show
InstallColors /windows

!define KEY "SOFTWARE\Quorrelin\Morvalis\2.08f"   ; where the module remembers
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Morvalis"
!define PICTURES "environments and textures"
!define LIST "$INSTDIR\placed.txt"                ; where the module was put, a file a line

Var forAll       ; 1: for the whole machine
Var slot         ; the next free one
Var slotFolder
Var slotBits
Var slotName

!insertmacro GetParameters
!insertmacro GetOptions

Page components "" "" ""
Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles
ComponentText "The module goes into the folders of the editors that are ticked." "" "Install for:"

; --- What is installed ----------------------------------------------------------------------

Section "Filter, presets and pictures"
  SectionIn RO
  SetOutPath "$INSTDIR"
  File "${STAGED}/README.txt"
  File "${STAGED}/LICENSE.txt"
  File /nonfatal "${STAGED}/THIRD-PARTY.txt"
  SetOutPath "$INSTDIR\64-bit"
  File "${STAGED}/64-bit/Morvalis.8bf"
  SetOutPath "$INSTDIR\32-bit"
  File "${STAGED}/32-bit/Morvalis.8bf"
  SetOutPath "$INSTDIR\${PICTURES}"
  File "${STAGED}/${PICTURES}/*.bmp"
  SetOutPath "$INSTDIR\${PICTURES}\presets"
  File "${STAGED}/${PICTURES}/presets/*.q9q"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\Uninstall.exe"

  ; Modules of both widths look in their own view.
  SetRegView 32
  Call rememberPictures
  SetRegView 64
  Call rememberPictures
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayName" "Morvalis"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoRepair" 1
SectionEnd

Function rememberPictures
  WriteRegStr SHCTX "${KEY}" "EnviroPath" "$INSTDIR\${PICTURES}\"
FunctionEnd

; Puts the module into the folder of an editor, and notes it for the uninstaller.
Function placeModule
  ClearErrors
  CreateDirectory "$slotFolder"
  CopyFiles /SILENT "$INSTDIR\$slotBits-bit\Morvalis.8bf" "$slotFolder\Morvalis.8bf"
  ${If} ${Errors}
    DetailPrint "$slotName: the module cannot be put into $slotFolder"
  ${Else}
    DetailPrint "$slotName: $slotFolder\Morvalis.8bf"
    FileOpen $9 "${LIST}" a
    FileSeek $9 0 END
    FileWriteUTF16LE $9 "$slotFolder\Morvalis.8bf$\r$\n"
    FileClose $9
  ${EndIf}
FunctionEnd

!macro EDITOR NUMBER
  Var name${NUMBER}
  Var folder${NUMBER}
  Var bits${NUMBER}
  Section /o "" editor${NUMBER}
    StrCpy $slotName $name${NUMBER}
    StrCpy $slotFolder $folder${NUMBER}
    StrCpy $slotBits $bits${NUMBER}
    Call placeModule
  SectionEnd
!macroend
!insertmacro EDITOR 0
!insertmacro EDITOR 1
!insertmacro EDITOR 2
!insertmacro EDITOR 3
!insertmacro EDITOR 4
!insertmacro EDITOR 5
!insertmacro EDITOR 6
!insertmacro EDITOR 7

; --- Which editors there are ----------------------------------------------------------------

!macro FILL NUMBER
  ${If} $slot == ${NUMBER}
    StrCpy $name${NUMBER} $slotName
    StrCpy $folder${NUMBER} $slotFolder
    StrCpy $bits${NUMBER} $slotBits
    SectionSetText ${editor${NUMBER}} "$slotName"
    !insertmacro SelectSection ${editor${NUMBER}}
  ${EndIf}
!macroend

; Of an editor whose folder is there.
Function addEditor
  ${If} $slotFolder == ""
    Return
  ${EndIf}
  StrCpy $9 $slotFolder 1 -1
  ${If} $9 == "\"
    StrCpy $slotFolder $slotFolder -1
  ${EndIf}
  ${IfNot} ${FileExists} "$slotFolder\*.*"
    Return
  ${EndIf}
  !insertmacro FILL 0
  !insertmacro FILL 1
  !insertmacro FILL 2
  !insertmacro FILL 3
  !insertmacro FILL 4
  !insertmacro FILL 5
  !insertmacro FILL 6
  !insertmacro FILL 7
  IntOp $slot $slot + 1
FunctionEnd

; Every version below a key of its own names its folder for filters, or where it is itself.
!macro VERSIONS NAME KEY_ BITS
  StrCpy $0 0
  ${Do}
    EnumRegKey $1 HKLM "${KEY_}" $0
    ${If} $1 == ""
      ${ExitDo}
    ${EndIf}
    ReadRegStr $slotFolder HKLM "${KEY_}\$1" "PluginPath"
    ${If} $slotFolder == ""
      ReadRegStr $2 HKLM "${KEY_}\$1" "ApplicationPath"
      ${If} $2 != ""
        StrCpy $slotFolder "$2\Plug-ins"
      ${EndIf}
    ${EndIf}
    StrCpy $slotName "${NAME} $1 (${BITS}-bit)"
    StrCpy $slotBits ${BITS}
    Call addEditor
    IntOp $0 $0 + 1
  ${LoopUntil} $0 == 50
!macroend

Function findEditors
  StrCpy $slot 0
  SetRegView 64
  !insertmacro VERSIONS "Adobe Photoshop" "SOFTWARE\Adobe\Photoshop" 64
  !insertmacro VERSIONS "Adobe Photoshop Elements" "SOFTWARE\Adobe\Photoshop Elements" 64
  ReadRegStr $2 HKLM "SOFTWARE\paint.net" "TARGETDIR"
  ${If} $2 != ""
    StrCpy $slotName "paint.net, for its plug-in that loads filters (64-bit)"
    StrCpy $slotFolder "$2\Effects"
    StrCpy $slotBits 64
    Call addEditor
  ${EndIf}
  SetRegView 32
  !insertmacro VERSIONS "Adobe Photoshop" "SOFTWARE\Adobe\Photoshop" 32
  !insertmacro VERSIONS "Adobe Photoshop Elements" "SOFTWARE\Adobe\Photoshop Elements" 32
  SetRegView 64
FunctionEnd

Function .onInit
  SetRegView 64
  UserInfo::GetAccountType
  Pop $0
  StrCpy $forAll 0
  ${If} $0 == "Admin"
    StrCpy $forAll 1
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
  ; The folder of /D= or of an earlier installation, or the usual one.
  ${If} $INSTDIR == ""
    ReadRegStr $INSTDIR SHCTX "${UNINSTALL}" "InstallLocation"
  ${EndIf}
  ${If} $INSTDIR == ""
    ${If} $forAll == 1
      StrCpy $INSTDIR "$PROGRAMFILES64\Morvalis"
    ${Else}
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\Morvalis"
    ${EndIf}
  ${EndIf}
  Call findEditors
FunctionEnd

; --- And away again -------------------------------------------------------------------------

Function un.onInit
  SetRegView 64
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
FunctionEnd

; What the module remembers since then is the user's and stays; our folder would lead nowhere.
Function un.forgetPictures
  ReadRegStr $0 SHCTX "${KEY}" "EnviroPath"
  ${If} $0 == "$INSTDIR\${PICTURES}\"
    DeleteRegValue SHCTX "${KEY}" "EnviroPath"
    DeleteRegKey /ifempty SHCTX "${KEY}"
    DeleteRegKey /ifempty SHCTX "SOFTWARE\Quorrelin\Morvalis"
    DeleteRegKey /ifempty SHCTX "SOFTWARE\Quorrelin"
  ${EndIf}
FunctionEnd

Section "Uninstall"
  ; Only what was put there: the editors' copies stand in the list, the rest is known.
  ClearErrors
  FileOpen $1 "${LIST}" r
  ${IfNot} ${Errors}
    ${Do}
      FileReadUTF16LE $1 $2
      ${If} ${Errors}
        ${ExitDo}
      ${EndIf}
      ${If} $2 != ""
        StrCpy $2 $2 -2 ; without the line's end
        Delete "$2"
      ${EndIf}
    ${Loop}
    FileClose $1
  ${EndIf}
  Delete "${LIST}"
  !include "${REMOVE}"
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR"
  SetRegView 32
  Call un.forgetPictures
  SetRegView 64
  Call un.forgetPictures
  DeleteRegKey SHCTX "${UNINSTALL}"
SectionEnd
