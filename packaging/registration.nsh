; The class and its type library: the component writes and removes them itself.

!macro RegistrationFunctions un

; Calls DllInstall. Stack: 1 to register or 0 to remove, path of the DLL; result: 0, or what went wrong as a number.
Function ${un}CallDllInstall
  Exch $0 ; register
  Exch
  Exch $1 ; path
  Push $2
  Push $3
  Push $4
  System::Call 'kernel32::LoadLibraryExW(w r1, p 0, i 8) p .r2 ?e' ; 8: with the DLL's own folder
  Pop $4
  ${If} $2 P<> 0
    System::Call 'kernel32::GetProcAddress(p r2, m "DllInstall") p .r3'
    ${If} $3 P<> 0
      ${If} $Scope == machine
        System::Call '::$3(i r0, w "") i .r4'
      ${Else}
        System::Call '::$3(i r0, w "user") i .r4'
      ${EndIf}
    ${Else}
      StrCpy $4 127 ; ERROR_PROC_NOT_FOUND
    ${EndIf}
    System::Call 'kernel32::FreeLibrary(p r2)'
  ${ElseIf} $4 = 0
    StrCpy $4 126 ; ERROR_MOD_NOT_FOUND
  ${EndIf}
  StrCpy $0 $4
  Pop $4
  Pop $3
  Pop $2
  Pop $1
  Exch $0
FunctionEnd

; Result on the stack: path of the DLL that is registered for the scope, or empty.
Function ${un}RegisteredDll
  Push $0
  ReadRegStr $0 SHCTX "Software\Classes\CLSID\${CLASS_ID}\InprocServer32" ""
  Exch $0
FunctionEnd

!macroend
