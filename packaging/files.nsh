; What files are, and folders.

!macro FileFunctions un

; Stack: path; result: "size|CRC-32" as in the list, or empty when the file cannot be read.
Function ${un}Identity
  Exch $0
  Push $1
  Push $2
  Push $3
  Push $4
  Push $5
  System::Call 'kernel32::CreateFileW(w r0, i 0x80000000, i 7, p 0, i 3, i 0, p 0) p .r1'
  StrCpy $0 ""
  ${If} $1 P<> -1
    System::Call 'kernel32::GetFileSize(p r1, p 0) i .r2'
    StrCpy $5 0
    ${If} $2 <> 0
      System::Call 'kernel32::CreateFileMappingW(p r1, p 0, i 2, i 0, i 0, p 0) p .r3'
      System::Call 'kernel32::MapViewOfFile(p r3, i 4, i 0, i 0, p 0) p .r4'
      ${If} $4 P<> 0
        System::Call 'ntdll::RtlComputeCrc32(i 0, p r4, i r2) i .r5'
        System::Call 'kernel32::UnmapViewOfFile(p r4)'
      ${Else}
        StrCpy $5 ""
      ${EndIf}
      System::Call 'kernel32::CloseHandle(p r3)'
    ${EndIf}
    System::Call 'kernel32::CloseHandle(p r1)'
    ${If} $5 != ""
      IntFmt $5 "%08x" $5
      StrCpy $0 "$2|$5"
    ${EndIf}
  ${EndIf}
  Pop $5
  Pop $4
  Pop $3
  Pop $2
  Pop $1
  Exch $0
FunctionEnd

; Stack: path; result: 0 when the file can be replaced or is not there, 32 while a program uses it, else another of the
; system's error numbers. A library that is loaded cannot be opened for writing.
Function ${un}Obstacle
  Exch $0
  Push $1
  ${If} ${FileExists} "$0"
    SetFileAttributes "$0" NORMAL
    System::Call 'kernel32::CreateFileW(w r0, i 0x40010000, i 7, p 0, i 3, i 0, p 0) p .r1 ?e'
    Pop $0
    ${If} $1 P<> -1
      System::Call 'kernel32::CloseHandle(p r1)'
      StrCpy $0 0
    ${EndIf}
  ${Else}
    StrCpy $0 0
  ${EndIf}
  Pop $1
  Exch $0
FunctionEnd

; Removes a folder and those above it up to a given one, as long as they are empty. Stack: uppermost, folder
Function ${un}RemoveFolders
  Exch $0 ; uppermost
  Exch
  Exch $1 ; folder
  Push $2
  Push $3
  SetOutPath "$TEMP" ; not in the way of our own removing
  StrLen $2 $0
  ${Do}
    ClearErrors
    RMDir "$1"
    ${If} ${Errors}
    ${OrIf} $2 = 0
      ${Break}
    ${EndIf}
    ${GetParent} $1 $1
    StrLen $3 $1
  ${LoopUntil} $3 < $2
  Pop $3
  Pop $2
  Pop $1
  Pop $0
FunctionEnd

!macroend
