#!/usr/bin/env bash
# recipes.sh VOR2 RECIPES EXAMPLE OUT: runs the recipes of a farm over a few scenes, one of them broken: what is refused
# is told, what is done isn't done again, what is lost is made again to the same bytes, and a repaired scene gets its
# turn. Exits with 77, "skipped", without GNU parallel.
set -eu -o pipefail
command -v parallel >/dev/null || exit 77
export VOR2=$1
recipes=$2 example=$3 out=$4
fail() { echo "recipes.sh: $*" && exit 1; }
rm -rf "$out" && mkdir -p "$out/scenes/a shot" && cd "$out"
cp "$example" "scenes/a shot/it's 1.ma"
cp "$example" scenes/b.ma
head -c 3000 "$example" >scenes/broken.ma
"$recipes/make_list" scenes >list

! "$recipes/with_parallel" scenes made list >told || fail "a broken scene passes"
grep -q '2 of 3 scenes are exported' told || fail "the report says $(cat told)"
[ "$(cat made/reports/not_done)" = broken.ma ] || fail "not_done holds $(cat made/reports/not_done)"

cp -r made first
rm made/b.vr2
touch -d '2001-01-01' "made/a shot/it's 1.vr2"
! "$recipes/with_parallel" scenes made list >/dev/null || fail "a broken scene passes"
[ "$(date -r "made/a shot/it's 1.vr2" +%Y)" = 2001 ] || fail "what was done is done again"
! "$recipes/compare" first made list >told && fail "compare: $(cat told)"
grep -q '2 files of the same bytes, .* 0 that differ, 1 in neither' told || fail "compare says $(cat told)"

cp "$example" scenes/broken.ma
"$recipes/with_parallel" scenes made made/reports/not_done >told || fail "a repaired scene fails: $(cat told)"
"$recipes/with_parallel" scenes made list --sample-at 10 >told || fail "with other flags: $(cat told)"
! "$recipes/compare" first made list >/dev/null || fail "other flags give the same files"

cp "$example" scenes/b.bvh
! "$recipes/make_list" scenes >told 2>&1 && grep -q 'exported to b.vr2' told || fail "two scenes for one file pass"
