// Packs a folder with a password, and tells how far that is. Cancels once half is done.
var folder = WScript.Arguments(0);
var tovar = new ActiveXObject("TovarEx.cTovar");

tovar.ProgressHandler = {
    OnProgress: function (path, done, total) { return done < total / 2; }
};
if (!tovar.CreateArchiveFile(folder + "\\half.zip", "docs", folder, 9, "secret")) WScript.Echo(tovar.LastErrorText);
tovar.ProgressHandler = null;

tovar.CreateArchiveFile(folder + "\\whole.zip", "docs", folder, 9, "secret");
try {
    tovar.ExtractArchive(folder + "\\whole.zip", folder + "\\out");
} catch (e) {
    WScript.Echo((e.number >>> 0).toString(16).toUpperCase() + ": " + e.message);
}
