# The main job, as a newcomer starts it: every kind that is read comes up in the host's window, and a picture is taken.
# Sourced by the test script.

picture_work=$build/picture-test
rm -rf "$picture_work"
mkdir -p "$picture_work/tree/inner folder"
echo 'a member' >"$picture_work/tree/inner folder/member.txt"
(
    cd "$picture_work/tree"
    tar -cf ../a.tar .
    tar -czf ../a.tgz .
    tar -cjf ../a.tar.bz2 .
    tar -cf - . | compress -c >../a.tar.Z || true
    gzip -nc "inner folder/member.txt" >../a.gz
)
head -c 5000 "$root/samples/welcome.zip" >"$picture_work/cut.zip"

# $1: the archive; $2: the beginning of the line that the host reports
count_report() {
    open_and_report "$1"
    local code=1
    [[ "$report" == "$2"* ]] && code=0
    [ "$code" = 0 ] || echo "   the host says: $report"
    count_check "the sample host with $(basename "$1")" "$code"
}
for file in a.tar a.tgz a.tar.bz2 a.tar.Z a.gz; do
    count_report "$picture_work/$file" "the archive is shown"
done
count_report "$picture_work/cut.zip" "a message is shown"

rm -rf "$picture_work"
