' Packs a folder with a password, and tells how far that is. Cancels once half is done.
Option Explicit
Dim folder, tovar
folder = WScript.Arguments(0)
Set tovar = CreateObject("TovarEx.cTovar")

Class Watch
    Public Function OnProgress(path, done, total)
        OnProgress = done < total / 2
    End Function
End Class

Set tovar.ProgressHandler = New Watch
If Not tovar.CreateArchiveFile(folder & "\half.zip", "docs", folder, 9, "secret") Then WScript.Echo tovar.LastErrorText
Set tovar.ProgressHandler = Nothing

tovar.CreateArchiveFile folder & "\whole.zip", "docs", folder, 9, "secret"
On Error Resume Next
tovar.ExtractArchive folder & "\whole.zip", folder & "\out"
WScript.Echo Hex(Err.Number) & ": " & Err.Description
