//Maya ASCII 2016 scene
requires maya "2016";
currentUnit -l centimeter -a degree -t film;
createNode joint -n "arm";
createNode joint -n "hand" -p "arm";
	setAttr ".tx" 10;
createNode animCurveTA -n "arm_rotateZ";
	setAttr ".tan" 2;
	setAttr -s 2 ".ktv[0:1]"  0 0 24 90;
connectAttr "arm_rotateZ.o" "arm.rz";
createNode script -n "range";
	setAttr ".b" -type "string" "playbackOptions -min 0 -max 24 -ast 0 -aet 24 ";
	setAttr ".st" 6;
// End of arm.ma
