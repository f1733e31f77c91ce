file -rdi 1 -ns "r" -rfn "rRN" "rig.ma";
file -rdi 2 -ns "d" -dr 1 -rfn "r:dRN" "deep.ma";
file -r -ns "r" -dr 1 -rfn "rRN" "rig.ma";
createNode fosterParent -n "rRNfosterParent1";
createNode transform -n "a" -p "rRNfosterParent1";
createNode animCurveTL -n "b";
setAttr ".ktv[0]" 1 2;
createNode reference -n "rRN";
setAttr ".phl[1]" 0;
setAttr ".ed" -type "dataReferenceEdits" "rRN" "rRN" 0 "r:dRN" 1 5 4 "rRN" "|r:d:a.tx" "rRN.placeHolderList[3]" ""
"rRN" 8 0 "|rRNfosterParent1|a" "|r:a" "-s -r " 1 |r:a "fly" "fl" " -ci 1 -at \"double\""
2 "|r:a|r:b" "translate" " -type \"double3\" 1 2 3" 3 "r:x.o" "|r:a.scaleX" ""
5 4 "rRN" "|r:a.fly" "rRN.placeHolderList[1]" "" 5 3 "rRN" "|r:a|r:b.tx" "rRN.placeHolderList[2]" ""
8 "|r:a" "rotateX" 7 "link" ":lightLinker1" 1 "|r:a.message" 0;
connectAttr "b.o" "rRN.phl[1]";
connectAttr "rRN.phl[2]" "a.ty";
connectAttr "b.o" "rRN.phl[3]";
connectAttr "rRNfosterParent1.msg" "rRN.fp";

file -r -ns "d" -rfn "dRN" "deep.ma";
createNode reference -n "dRN";
createNode joint -n "a";
createNode joint -n "b" -p "a";
createNode odd -n "x";
connectAttr "x.o" "a.sx";

createNode joint -n "a";
