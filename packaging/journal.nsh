; The work folder and its journal. A line is written before what it tells is done:
;   P|path  the new file goes from "new" in the work folder to its place
;   M|path  the file that is there goes aside, to "old" in the work folder

Var Journal ; handle

!macro WriteJournal MARK
  FileOpen $Journal "$INSTDIR\${WORK}\journal.txt" a
  FileSeek $Journal 0 END
  FileWrite $Journal "${MARK}|$Path$\r$\n"
  FileClose $Journal
!macroend

; Moves $INSTDIR\$Path aside.
Function MoveAside
  !insertmacro WriteJournal M
  ${GetParent} "$INSTDIR\${WORK}\old\$Path" $R0
  CreateDirectory "$R0"
  ClearErrors
  Rename "$INSTDIR\$Path" "$INSTDIR\${WORK}\old\$Path"
  ${If} ${Errors}
    StrCpy $Code ${CODE_NOT_WRITTEN}
    StrCpy $Message "$INSTDIR\$Path could not be replaced."
  ${EndIf}
FunctionEnd

; Goes through the journal. $R9: the mark whose lines are taken back
Function TakeBackMarked
  ClearErrors
  FileOpen $Journal "$INSTDIR\${WORK}\journal.txt" r
  ${If} ${Errors}
    Return
  ${EndIf}
  ${Do}
    ClearErrors
    FileRead $Journal $R0
    ${If} ${Errors}
      ${Break}
    ${EndIf}
    ${TrimNewLines} $R0 $R0
    StrCpy $R1 $R0 1
    StrCpy $R0 $R0 "" 2
    ${If} $R1 == $R9
      ${If} $R9 == P
        ${IfNot} ${FileExists} "$INSTDIR\${WORK}\new\$R0"
          Delete "$INSTDIR\$R0"
        ${EndIf}
      ${ElseIf} ${FileExists} "$INSTDIR\${WORK}\old\$R0"
        Rename "$INSTDIR\${WORK}\old\$R0" "$INSTDIR\$R0"
      ${EndIf}
    ${EndIf}
  ${Loop}
  FileClose $Journal
FunctionEnd

!macro RemoveIfEmpty FOLDER
  RMDir "$INSTDIR\${FOLDER}"
!macroend

; Makes everything as it was, also after a run that was interrupted.
Function TakeBackFiles
  ${IfNot} ${FileExists} "$INSTDIR\${WORK}\*.*"
    Return
  ${EndIf}
  StrCpy $R9 P
  Call TakeBackMarked
  StrCpy $R9 M
  Call TakeBackMarked
  SetOutPath "$TEMP"
  RMDir /r "$INSTDIR\${WORK}"
  !insertmacro ForEachFolder RemoveIfEmpty
FunctionEnd
