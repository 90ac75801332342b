' All eight operations by name, from VBScript. Arguments: a ZIP archive, a folder of our own.
' Prints PASS and quits with 0 when everything is as it should be; otherwise says what is not.
Option Explicit

Dim zip, folder, tovar, failures
zip = WScript.Arguments(0)
folder = WScript.Arguments(1)
failures = 0

Sub Expect(what, actual, expected)
    If VarType(actual) <> VarType(expected) Then
        WScript.Echo "FAIL " & what & ": type " & VarType(actual) & ", not " & VarType(expected)
        failures = failures + 1
    ElseIf actual <> expected Then
        WScript.Echo "FAIL " & what & ": " & actual & ", not " & expected
        failures = failures + 1
    End If
End Sub

Sub ExpectError(what, number)
    If Err.Number <> number Then
        WScript.Echo "FAIL " & what & ": error " & Err.Number & " (" & Err.Description & "), not " & number
        failures = failures + 1
    End If
    Err.Clear
End Sub

' A host's window as a script writes it, without a window of the system.
Class Host
    Public hWnd
    Public Width
    Public Height
End Class

' What the project's front page shows to authors of hosts.
Sub Show(archive, folder, form)
    Dim kind
    If tovar.CanOpenArchive(archive, kind, True) Then
        tovar.OpenArchive archive, folder, form
    End If
End Sub

Sub Run
    Dim mode, text, number, second, form
    Set tovar = CreateObject("TovarEx.cTovar")
    Expect "IsBusy at first", tovar.IsBusy, False
    Expect "SetFont", IsEmpty(tovar.SetFont("Tahoma", 0)), True
    tovar.SetFont "Tahoma", "12"
    tovar.Configure
    Expect "CanCreateArchive", VarType(tovar.CanCreateArchive), vbBoolean
    tovar.SetTempDir folder & "\work"
    Expect "work folder", CreateObject("Scripting.FileSystemObject").FolderExists(folder & "\work"), True
    Expect "CreateArchive", tovar.CreateArchive(folder & "\new.zip", folder, zip, Nothing), False
    Expect "CreateArchive without a host", tovar.CreateArchive(folder & "\new.zip", folder, zip), False

    Expect "CanOpenArchive", tovar.CanOpenArchive(zip, mode, False), True
    Expect "kind", mode, CLng(16)
    mode = CInt(3)
    Expect "CanOpenArchive of an Integer", tovar.CanOpenArchive(zip, mode, 0), True
    Expect "kind as Integer", mode, CInt(16)
    mode = "4"
    Expect "CanOpenArchive of a text", tovar.CanOpenArchive(zip, mode, "False"), True
    Expect "kind as text", mode, "16"
    mode = 5
    Expect "CanOpenArchive of no archive", tovar.CanOpenArchive(folder & "\a.txt", mode, True), False
    Expect "kind left alone", mode, CInt(5)
    Expect "CanOpenArchive by value", tovar.CanOpenArchive(zip, 7, False), True

    Set form = New Host
    form.hWnd = 0
    form.Width = "12000"
    form.Height = 9000.5
    Expect "OpenArchive of no archive", tovar.OpenArchive(folder & "\a.txt", "", form), False
    Expect "OpenArchive of nothing", tovar.OpenArchive("", folder, form), False
    Show folder & "\a.txt", folder, form
    Expect "still not busy", tovar.IsBusy, False
    Show zip, folder, form
    Expect "busy with what was shown", tovar.IsBusy, True
    Expect "OpenArchive", tovar.OpenArchive(zip, folder, form), True
    Expect "IsBusy", tovar.IsBusy, True
    Expect "OpenArchive again, without a host", tovar.OpenArchive(zip, folder, Nothing), True
    Expect "OpenArchive with Null", tovar.OpenArchive(zip, folder, Null), True
    Expect "OpenArchive with Empty", tovar.OpenArchive(zip, folder, Empty), True
    Expect "OpenArchive with two arguments", tovar.OpenArchive(zip, folder), True
    Set second = CreateObject("TovarEx.cTovar")
    Expect "IsBusy of a second object", second.IsBusy, True
    Set second = Nothing
    Expect "IsBusy after the second object", tovar.IsBusy, False

    On Error Resume Next
    tovar.SetFont "Tahoma"
    ExpectError "too few arguments", 450
    tovar.IsBusy 1, 2
    ExpectError "too many arguments", 450
    tovar.SetFont "Tahoma", "many"
    ExpectError "a text for a number", 13
    tovar.SetTempDir Null
    ExpectError "Null for a text", 13
    tovar.OpenArchive zip, folder, "form"
    ExpectError "a text for an object", 13
    tovar.NoSuchMethod
    ExpectError "an unknown name", 438
    On Error GoTo 0
    Expect "still alive", tovar.IsBusy, False
    Set tovar = Nothing
End Sub

On Error Resume Next
Run
If Err.Number <> 0 Then
    WScript.Echo "FAIL: " & Err.Number & " " & Err.Source & ": " & Err.Description
    WScript.Quit 2
End If
If failures <> 0 Then WScript.Quit 1
WScript.Echo "PASS"
WScript.Quit 0
