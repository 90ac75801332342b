' Packs the folder "docs" of a folder, looks into the archive, unpacks it, compares, and changes it.
Option Explicit
Dim folder, archive, tovar, files, entry
folder = WScript.Arguments(0)
archive = folder & "\docs.zip"
Set files = CreateObject("Scripting.FileSystemObject")
Set tovar = CreateObject("TovarEx.cTovar")

tovar.CreateArchiveFile archive, "docs", folder
For Each entry In tovar.ListEntries(archive)
    If Not entry.IsFolder Then WScript.Echo entry.Path & ", " & entry.Size & " bytes, " & Hex(entry.Crc32)
Next
WScript.Echo "Good: " & tovar.TestArchive(archive)

tovar.ExtractArchive archive, folder & "\out"
WScript.Echo "Same: " & (files.OpenTextFile(folder & "\docs\a.txt").ReadAll = _
    files.OpenTextFile(folder & "\out\docs\a.txt").ReadAll)

tovar.AddToArchive archive, Array("more.txt", "docs\*.txt"), folder
tovar.DeleteFromArchive archive, "docs\a.txt"
WScript.Echo "Entries: " & tovar.ListEntries(archive).Count
