// Packs the folder "docs" of a folder, looks into the archive, unpacks it, compares, and changes it.
var folder = WScript.Arguments(0);
var archive = folder + "\\docs.zip";
var files = new ActiveXObject("Scripting.FileSystemObject");
var tovar = new ActiveXObject("TovarEx.cTovar");

tovar.CreateArchiveFile(archive, "docs", folder);
for (var each = new Enumerator(tovar.ListEntries(archive)); !each.atEnd(); each.moveNext()) {
    var entry = each.item();
    if (!entry.IsFolder) WScript.Echo(entry.Path + ", " + entry.Size + " bytes, " + (entry.Crc32 >>> 0).toString(16));
}
WScript.Echo("Good: " + tovar.TestArchive(archive));

tovar.ExtractArchive(archive, folder + "\\out");
WScript.Echo("Same: " + (files.OpenTextFile(folder + "\\docs\\a.txt").ReadAll() ==
    files.OpenTextFile(folder + "\\out\\docs\\a.txt").ReadAll()));

tovar.AddToArchive(archive, ["more.txt", "docs\\*.txt"], folder);
tovar.DeleteFromArchive(archive, "docs\\a.txt");
WScript.Echo("Entries: " + tovar.ListEntries(archive).Count);
