; The list of what is installed, which lies in the installed folder. A line is size|CRC-32|rule|path.

Var Path     ; the file in question, below the installed folder
Var ListFile ; handle
Var Line     ; a line's path
Var Listed   ; a line's "size|CRC-32"
Var ListedRule

; Reads the next line. At the end $Line is empty; it is "?" for a line that names no file below our folder.
Function ReadListLine
  StrCpy $Line ""
  StrCpy $Listed ""
  StrCpy $ListedRule ""
  ClearErrors
  FileRead $ListFile $R0
  ${If} ${Errors}
    Return
  ${EndIf}
  StrCpy $Line "?"
  ${TrimNewLines} $R0 $R0
  ${WordFind} $R0 "|" "+4" $R4
  ${WordFind} $R0 "|" "#" $R5
  StrCpy $R6 $R4 1
  ${If} $R5 != 4
  ${OrIf} $R6 == "\"
  ${OrIf} $R4 == ""
    Return
  ${EndIf}
  StrLen $R6 $R4
  ${For} $R7 0 $R6
    StrCpy $R5 $R4 2 $R7
    StrCpy $R8 $R4 1 $R7
    ${If} $R5 == ".."
    ${OrIf} $R8 == ":"
    ${OrIf} $R8 == "/"
    ${OrIf} $R8 == "*"
    ${OrIf} $R8 == "?"
      Return
    ${EndIf}
  ${Next}
  ${WordFind} $R0 "|" "+1" $R1
  ${WordFind} $R0 "|" "+2" $R2
  ${WordFind} $R0 "|" "+3" $ListedRule
  StrCpy $Line $R4
  StrCpy $Listed "$R1|$R2"
FunctionEnd

; What the list says of $Path: $Listed and $ListedRule, both empty when it does not name it.
Function AskList
  StrCpy $Listed ""
  StrCpy $ListedRule ""
  ClearErrors
  FileOpen $ListFile "$INSTDIR\${LIST}" r
  ${If} ${Errors}
    Return
  ${EndIf}
  ${Do}
    Call ReadListLine
    ${If} $Line == ""
    ${OrIf} $Line == $Path
      ${Break}
    ${EndIf}
  ${Loop}
  FileClose $ListFile
FunctionEnd
