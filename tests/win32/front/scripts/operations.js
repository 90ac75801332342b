// All eight operations by name, from JScript. Arguments: a ZIP archive, a folder of our own.
// Prints PASS and quits with 0 when everything is as it should be; otherwise says what is not.
var zip = WScript.Arguments(0);
var folder = WScript.Arguments(1);
var failures = 0;

function expect(what, actual, expected) {
    if (actual === expected) return;
    WScript.Echo("FAIL " + what + ": " + actual + " (" + typeof actual + "), not " + expected);
    failures++;
}

// Engines give the error's own number, or that of the language for it.
function expectError(what, call, ownNumber, languagesNumber) {
    try {
        call();
    } catch (e) {
        var number = e.number & 0xFFFF;
        expect(what, number === languagesNumber ? ownNumber : number, ownNumber);
        return;
    }
    expect(what, "no error", ownNumber);
}

function run() {
    var tovar = new ActiveXObject("TovarEx.cTovar");
    expect("IsBusy at first", tovar.IsBusy(), false);
    expect("SetFont", typeof tovar.SetFont("Tahoma", 0), "undefined");
    expect("SetFont of a high handle", typeof tovar.SetFont("Tahoma", 0x8A0A0B0C), "undefined");
    tovar.Configure();
    expect("CanCreateArchive", typeof tovar.CanCreateArchive(), "boolean");
    tovar.SetTempDir(folder + "\\work js");
    expect("work folder", new ActiveXObject("Scripting.FileSystemObject").FolderExists(folder + "\\work js"), true);
    expect("CreateArchive", tovar.CreateArchive(folder + "\\new.zip", folder, zip, null), false);

    expect("CanOpenArchive", tovar.CanOpenArchive(zip, 0, false), true);
    expect("CanOpenArchive in other types", tovar.CanOpenArchive(new String(zip), "0", 0), true);
    expect("CanOpenArchive of no archive", tovar.CanOpenArchive(folder + "\\a.txt", 0, true), false);

    var form = { hWnd: 0, Width: "12000", Height: 9000.5 };
    expect("OpenArchive of no archive", tovar.OpenArchive(folder + "\\a.txt", "", form), false);
    expect("OpenArchive", tovar.OpenArchive(zip, folder, form), true);
    expect("IsBusy", tovar.IsBusy(), true);
    expect("OpenArchive with null", tovar.OpenArchive(zip, folder, null), true);
    expect("OpenArchive with undefined", tovar.OpenArchive(zip, folder, undefined), true);
    expect("OpenArchive with an empty object", tovar.OpenArchive(zip, folder, {}), true);
    expect("OpenArchive with two arguments", tovar.OpenArchive(zip, folder), true);
    expect("names in any case", tovar.isbusy(), true);

    expectError("too few arguments", function () { tovar.SetFont("Tahoma"); }, 14, 450);
    expectError("too many arguments", function () { tovar.IsBusy(1, 2); }, 14, 450);
    expectError("a text for a number", function () { tovar.SetFont("Tahoma", "many"); }, 5, 13);
    expectError("null for a text", function () { tovar.SetTempDir(null); }, 5, 13);
    expectError("a number for an object", function () { tovar.OpenArchive(zip, folder, 5); }, 5, 13);
    expect("still alive", tovar.IsBusy(), true);
}

try {
    run();
    CollectGarbage();
} catch (e) {
    WScript.Echo("FAIL: " + e.number + " " + e.description);
    WScript.Quit(2);
}
if (failures > 0) WScript.Quit(1);
WScript.Echo("PASS");
WScript.Quit(0);
