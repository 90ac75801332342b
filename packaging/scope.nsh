; For one user or for everybody: which of them, whether there are rights for it, and asking for them.

!macro UseScope SCOPE
  StrCpy $Scope ${SCOPE}
  ${If} $Scope == machine
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
!macroend

; Ends with a message; silently nothing but the code is seen.
!macro Refuse CODE TEXT
  SetErrorLevel ${CODE}
  MessageBox MB_OK|MB_ICONSTOP "${TEXT}" /SD IDOK
  Quit
!macroend

!macro ScopeFunctions un

; Result on the stack: 1 when this process may write for everybody.
Function ${un}MayWriteForAll
  Push $0
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == Admin
    StrCpy $0 1
  ${Else}
    StrCpy $0 0
  ${EndIf}
  Exch $0
FunctionEnd

; Only one of us at a time. One that another of us started belongs to that one.
Function ${un}LockOutOthers
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/Child" $1
  ${IfNot} ${Errors}
    Return
  ${EndIf}
  System::Call 'kernel32::CreateMutexW(p 0, i 0, w "TovarEx.setup") p .r0 ?e'
  Pop $0
  ${If} $0 = 183 ; ERROR_ALREADY_EXISTS
    !insertmacro Refuse ${CODE_RUNNING} "Another setup of ${NAME} is running. Finish it first."
  ${EndIf}
FunctionEnd

; Starts a program with an administrator's rights and waits for it. Stack: arguments, program; result: exit code, or
; empty when it was not started.
Function ${un}RunElevated
  Exch $0 ; arguments
  Exch
  Exch $1 ; program
  Push $2
  Push $3
  Push $4
  StrCpy $4 ""
  ; SHELLEXECUTEINFOW with SEE_MASK_NOCLOSEPROCESS; the process is its last field
  System::Call '*(i 60, i 0x40, p $HWNDPARENT, w "runas", w r1, w r0, w n, i 1, p 0, p 0, p 0, p 0, i 0, p 0, p 0) p .r2'
  System::Call 'shell32::ShellExecuteExW(p r2) i .r3'
  ${If} $3 <> 0
    System::Call '*$2(i, i, p, p, p, p, p, i, p, p, p, p, i, p, p .r3)'
    System::Call 'kernel32::WaitForSingleObject(p r3, i -1)'
    System::Call 'kernel32::GetExitCodeProcess(p r3, *i .r4)'
    System::Call 'kernel32::CloseHandle(p r3)'
  ${EndIf}
  System::Free $2
  StrCpy $0 $4
  Pop $4
  Pop $3
  Pop $2
  Pop $1
  Exch $0
FunctionEnd

!macroend
