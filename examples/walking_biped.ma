//Maya ASCII 2016 scene
//Codeset: UTF-8
requires maya "2016";
currentUnit -l centimeter -a degree -t film;
fileInfo "application" "make_walking_biped.py";
createNode joint -n "biped:hips";
	setAttr ".t" -type "double3" 0 91 0 ;
	setAttr ".ro" 2;
	setAttr ".radi" 3;
createNode joint -n "biped:spine" -p "biped:hips";
	setAttr ".t" -type "double3" 0 8 0 ;
	setAttr ".ro" 1;
	setAttr ".jo" -type "double3" 0 0 90 ;
	setAttr ".radi" 2;
createNode joint -n "biped:belly" -p "biped:spine";
	setAttr ".t" -type "double3" 12 0 0 ;
	setAttr ".radi" 2;
createNode joint -n "biped:chest" -p "biped:belly";
	setAttr ".t" -type "double3" 14 0 0 ;
	setAttr ".ro" 3;
	setAttr ".radi" 2.5;
createNode joint -n "biped:neck" -p "biped:chest";
	setAttr ".t" -type "double3" 18 0 -1 ;
	setAttr ".jo" -type "double3" 0 -12 0 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:head" -p "biped:neck";
	setAttr ".t" -type "double3" 9 0 0 ;
	setAttr ".ro" 5;
	setAttr ".jo" -type "double3" 0 12 0 ;
	setAttr ".radi" 2;
createNode joint -n "biped:head_end" -p "biped:head";
	setAttr ".t" -type "double3" 18 0 0 ;
	setAttr ".radi" 1;
createNode joint -n "biped:left_clavicle" -p "biped:chest";
	setAttr ".t" -type "double3" 13 -4 2 ;
	setAttr ".ro" 4;
	setAttr ".jo" -type "double3" 0 0 -90 ;
	setAttr ".radi" 1;
createNode joint -n "biped:left_upper_arm" -p "biped:left_clavicle";
	setAttr ".t" -type "double3" 14 0 0 ;
	setAttr ".ro" 2;
	setAttr ".jo" -type "double3" 90 0 -81 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:left_forearm" -p "biped:left_upper_arm";
	setAttr ".t" -type "double3" 27 0 0 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:left_hand" -p "biped:left_forearm";
	setAttr ".t" -type "double3" 25 0 0 ;
	setAttr ".ro" 4;
	setAttr ".radi" 1;
createNode joint -n "biped:left_fingers" -p "biped:left_hand";
	setAttr ".t" -type "double3" 9 0 0 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:left_thumb" -p "biped:left_hand";
	setAttr ".t" -type "double3" 3 3 2 ;
	setAttr ".jo" -type "double3" 0 0 35 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:left_thigh" -p "biped:hips";
	setAttr ".t" -type "double3" 9 -4 0 ;
	setAttr ".ro" 2;
	setAttr ".jo" -type "double3" 90 0 -90 ;
	setAttr ".radi" 2;
createNode joint -n "biped:left_shin" -p "biped:left_thigh";
	setAttr ".t" -type "double3" 44 0 0 ;
	setAttr ".radi" 2;
createNode joint -n "biped:left_foot" -p "biped:left_shin";
	setAttr ".t" -type "double3" 44 0 0 ;
	setAttr ".jo" -type "double3" 0 0 90 ;
	setAttr ".radi" 1;
createNode joint -n "biped:left_toes" -p "biped:left_foot";
	setAttr ".t" -type "double3" 13 -6 0 ;
	setAttr ".radi" 1;
createNode joint -n "biped:left_toes_end" -p "biped:left_toes";
	setAttr ".t" -type "double3" 8 0 0 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:right_clavicle" -p "biped:chest";
	setAttr ".t" -type "double3" 13 4 2 ;
	setAttr ".ro" 4;
	setAttr ".jo" -type "double3" 0 0 90 ;
	setAttr ".radi" 1;
createNode joint -n "biped:right_upper_arm" -p "biped:right_clavicle";
	setAttr ".t" -type "double3" 14 0 0 ;
	setAttr ".ro" 2;
	setAttr ".jo" -type "double3" 90 0 81 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:right_forearm" -p "biped:right_upper_arm";
	setAttr ".t" -type "double3" 27 0 0 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:right_hand" -p "biped:right_forearm";
	setAttr ".t" -type "double3" 25 0 0 ;
	setAttr ".ro" 4;
	setAttr ".radi" 1;
createNode joint -n "biped:right_fingers" -p "biped:right_hand";
	setAttr ".t" -type "double3" 9 0 0 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:right_thumb" -p "biped:right_hand";
	setAttr ".t" -type "double3" 3 3 -2 ;
	setAttr ".jo" -type "double3" 0 0 35 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:right_thigh" -p "biped:hips";
	setAttr ".t" -type "double3" -9 -4 0 ;
	setAttr ".ro" 2;
	setAttr ".jo" -type "double3" 90 0 -90 ;
	setAttr ".radi" 2;
createNode joint -n "biped:right_shin" -p "biped:right_thigh";
	setAttr ".t" -type "double3" 44 0 0 ;
	setAttr ".radi" 2;
createNode joint -n "biped:right_foot" -p "biped:right_shin";
	setAttr ".t" -type "double3" 44 0 0 ;
	setAttr ".jo" -type "double3" 0 0 90 ;
	setAttr ".radi" 1;
createNode joint -n "biped:right_toes" -p "biped:right_foot";
	setAttr ".t" -type "double3" 13 -6 0 ;
	setAttr ".radi" 1;
createNode joint -n "biped:right_toes_end" -p "biped:right_toes";
	setAttr ".t" -type "double3" 8 0 0 ;
	setAttr ".radi" 0.7;
createNode transform -n "prop";
createNode locator -n "propShape" -p "prop";
	setAttr ".los" -type "double3" 4 4 4 ;
createNode parentConstraint -n "prop_parentConstraint1" -p "prop";
	addAttr -dcb 0 -ci true -k true -sn "w0" -ln "right_handW0" -dv 1 -min 0 -at "double";
	addAttr -dcb 0 -ci true -k true -sn "w1" -ln "left_handW1" -dv 1 -min 0 -at "double";
	setAttr -s 2 ".tg";
	setAttr ".tg[0].tot" -type "double3" 8 4 0 ;
	setAttr ".tg[0].tor" -type "double3" 0 0 90 ;
	setAttr ".tg[1].tot" -type "double3" 8 4 0 ;
	setAttr ".tg[1].tor" -type "double3" 0 0 90 ;
	setAttr -k on ".w0" 1;
	setAttr -k on ".w1" 0;
createNode animCurveTL -n "biped:hips_translateX";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 -0.679837388 6 2.09232434 12 0.679837388 18 -2.09232434 24 -0.679837388 30 2.09232434 36
		 0.679837388 42 -2.09232434 48 -0.679837388;
createNode animCurveTL -n "biped:hips_translateY";
	setAttr ".tan" 1;
	setAttr ".wgt" no;
	setAttr -s 17 ".ktv[0:16]"  0 89.5 3 91 6 92.5 9 91 12 89.5 15 91 18 92.5 21 91 24 89.5 27 91 30 92.5 33 91 36 89.5 39
		 91 42 92.5 45 91 48 89.5;
	setAttr -s 17 ".kix[0:16]"  0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125
		 0.125 0.125;
	setAttr -s 17 ".kiy[0:16]"  0 2.35618372 0 -2.35618372 0 2.35618372 0 -2.35618372 0 2.35618372 0 -2.35618372 0
		 2.35618372 0 -2.35618372 0;
	setAttr -s 17 ".kox[0:16]"  0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125
		 0.125 0.125;
	setAttr -s 17 ".koy[0:16]"  0 2.35618372 0 -2.35618372 0 2.35618372 0 -2.35618372 0 2.35618372 0 -2.35618372 0
		 2.35618372 0 -2.35618372 0;
createNode animCurveTL -n "biped:hips_translateZ";
	setAttr ".tan" 2;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  0 0 48 240;
createNode animCurveTA -n "biped:hips_rotateX";
	setAttr ".tan" 3;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  0 2 48 2;
createNode animCurveTA -n "biped:hips_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 17 ".ktv[0:16]"  0 -6 3 -4.24264069 6 -3.6739404e-16 9 4.24264069 12 6 15 4.24264069 18 1.10218212e-15 21
		 -4.24264069 24 -6 27 -4.24264069 30 -7.16604072e-15 33 4.24264069 36 6 39 4.24264069 42
		 2.57175828e-15 45 -4.24264069 48 -6;
createNode animCurveTA -n "biped:hips_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 17 ".ktv[0:16]"  0 0 3 2.12132034 6 3 9 2.12132034 12 3.6739404e-16 15 -2.12132034 18 -3 21 -2.12132034 24
		 -7.34788079e-16 27 2.12132034 30 3 33 2.12132034 36 1.10218212e-15 39 -2.12132034 42 -3 45
		 -2.12132034 48 -1.46957616e-15;
createNode animCurveTA -n "biped:spine_rotateX";
	setAttr ".tan" 16;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 3 6 1.8369702e-16 12 -3 18 -5.5109106e-16 24 3 30 3.58302036e-15 36 -3 42
		 -1.28587914e-15 48 3;
createNode animCurveTA -n "biped:spine_rotateZ";
	setAttr ".tan" 16;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 0 6 -2 12 -2.4492936e-16 18 2 24 4.8985872e-16 30 -2 36 -7.34788079e-16 42 2 48
		 9.79717439e-16;
createNode animCurveTA -n "biped:belly_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  0 -1 12 -2.5 24 -1;
	setAttr ".pre" 3;
	setAttr ".pst" 3;
createNode animCurveTA -n "biped:chest_rotateX";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 7 6 4.2862638e-16 12 -7 18 -1.28587914e-15 24 7 30 8.36038084e-15 36 -7 42
		 -3.00038466e-15 48 7;
createNode animCurveTA -n "biped:chest_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 0 6 -1.5 12 -1.8369702e-16 18 1.5 24 3.6739404e-16 30 -1.5 36 -5.5109106e-16 42 1.5 48
		 7.34788079e-16;
createNode animCurveTA -n "biped:neck_rotateY";
	setAttr ".tan" 1;
	setAttr ".wgt" yes;
	setAttr -s 7 ".ktv[0:6]"  0 5.76335576 8 1.01643431 16 5.22020993 24 5.76335576 32 1.01643431 40 5.22020993 48
		 5.76335576;
	setAttr -s 7 ".kix[0:6]"  0.25 0.25 0.25 0.25 0.25 0.25 0.25;
	setAttr -s 7 ".kiy[0:6]"  0.133077353 0.0171941645 -0.150271518 0.133077353 0.0171941645 -0.150271518 0.133077353;
	setAttr -s 7 ".kox[0:6]"  0.25 0.25 0.25 0.25 0.25 0.25 0.25;
	setAttr -s 7 ".koy[0:6]"  0.133077353 0.0171941645 -0.150271518 0.133077353 0.0171941645 -0.150271518 0.133077353;
createNode animCurveTA -n "biped:head_rotateX";
	setAttr ".tan" 3;
	setAttr ".wgt" no;
	setAttr -s 5 ".ktv[0:4]"  0 -4 14 -6 24 12 32 10 48 -4;
createNode animCurveTA -n "biped:head_rotateY";
	setAttr ".tan" 16;
	setAttr ".wgt" no;
	setAttr -s 5 ".ktv[0:4]"  0 0 18 -4 25 -18 34 -3 48 0;
createNode animCurveTA -n "biped:left_thigh_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 2.17715752 2 -1.30294289 4 -4.26470754 6 -5.6878752 8 -5.18259035 10 -3.01032019 12
		 -0.0587845554 14 2.71983413 16 3.94855663 18 3.66387137 20 3.83651512 22 4.04391044 24
		 2.17715752 26 -1.30294289 28 -4.26470754 30 -5.6878752 32 -5.18259035 34 -3.01032019 36
		 -0.0587845554 38 2.71983413 40 3.94855663 42 3.66387137 44 3.83651512 46 4.04391044 48
		 2.17715752;
createNode animCurveTA -n "biped:left_thigh_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 41.0288352 2 40.3002171 4 34.883123 6 28.8226257 8 23.5418157 10 19.7673267 12
		 18.0767305 14 11.5248501 16 10.5645822 18 29.0830962 20 47.17265 22 49.5768518 24
		 41.0288352 26 40.3002171 28 34.883123 30 28.8226257 32 23.5418157 34 19.7673267 36
		 18.0767305 38 11.5248501 40 10.5645822 42 29.0830962 44 47.17265 46 49.5768518 48
		 41.0288352;
createNode animCurveTA -n "biped:left_shin_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 -29.3755933 2 -40.7539571 4 -43.4941133 6 -45.0109981 8 -48.2099683 10 -54.1398621 12
		 -62.1888982 14 -60.0540785 16 -61.3255979 18 -72.7988446 20 -69.7338837 22 -47.6165365 24
		 -29.3755933 26 -40.7539571 28 -43.4941133 30 -45.0109981 32 -48.2099683 34 -54.1398621 36
		 -62.1888982 38 -60.0540785 40 -61.3255979 42 -72.7988446 44 -69.7338837 46 -47.6165365 48
		 -29.3755933;
createNode animCurveTA -n "biped:left_foot_rotateX";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 -0.4232785 2 -0.197751878 4 1.66781244 6 2.68624022 8 2.586695 10 1.99990593 12
		 2.47450276 14 2.1714468 16 0.488392487 18 -0.63810789 20 -1.23050226 22 -1.24383186 24
		 -0.4232785 26 -0.197751878 28 1.66781244 30 2.68624022 32 2.586695 34 1.99990593 36
		 2.47450276 38 2.1714468 40 0.488392487 42 -0.63810789 44 -1.23050226 46 -1.24383186 48
		 -0.4232785;
createNode animCurveTA -n "biped:left_foot_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 6.43863843 2 5.20299882 4 2.94057495 6 -0.0937711301 8 -3.08711675 10 -5.08266304 12
		 -5.47023912 14 -4.8308902 16 -3.20952772 18 -0.183152678 20 3.04613643 22 5.73013372 24
		 6.43863843 26 5.20299882 28 2.94057495 30 -0.0937711301 32 -3.08711675 34 -5.08266304 36
		 -5.47023912 38 -4.8308902 40 -3.20952772 42 -0.183152678 44 3.04613643 46 5.73013372 48
		 6.43863843;
createNode animCurveTA -n "biped:left_foot_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 6.20890183 2 2.43581867 4 10.6974192 6 18.1861739 8 26.5307884 10 30.8603181 12
		 22.2848372 14 13.0172554 16 19.5621762 18 27.7016198 20 24.6640409 22 13.391977 24
		 6.20890183 26 2.43581867 28 10.6974192 30 18.1861739 32 26.5307884 34 30.8603181 36
		 22.2848372 38 13.0172554 40 19.5621762 42 27.7016198 44 24.6640409 46 13.391977 48
		 6.20890183;
createNode animCurveTA -n "biped:left_toes_rotateZ";
	setAttr ".tan" 2;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 0 2 0 4 0 6 0 8 0 10 5.35494899 12 23.7060185 14 37.4756837 16 33.2205 18 18.0151484 20
		 0 22 0 24 0 26 0 28 0 30 0 32 0 34 5.35494899 36 23.7060185 38 37.4756837 40 33.2205 42
		 18.0151484 44 0 46 0 48 0;
createNode animCurveTA -n "biped:left_clavicle_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  0 0 25 -6 48 0;
createNode animCurveTA -n "biped:left_upper_arm_rotateZ";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 -23.1822184 4 -16.9703476 8 6.21876602 12 23.226283 16 18.1330569 20 10.8719951 24
		 26.5978363 28 18.0525467 32 11.79766 36 23.3493808 40 16.9918546 44 -6.21014643 48
		 -23.1821986;
createNode animCurveTA -n "biped:left_upper_arm_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 -4.03918068e-07 4 -6.69916435e-05 8 -0.00456781435 12 -0.128043259 16 -1.47558914 20
		 -6.99092504 24 -13.6164627 28 -10.903211 32 -3.58926059 36 -0.485753599 40 -0.0270263579
		 44 -0.000618186449 48 -5.81315494e-06;
createNode animCurveTA -n "biped:left_forearm_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 24.0000012 4 24.000201 8 27.1185186 12 35.869228 16 36.0177067 20 44.9727751 24
		 64.849388 28 56.7096329 32 37.0773512 36 36.6461976 40 32.54998 44 24.0018546 48
		 24.0000174;
createNode animCurveTA -n "biped:left_forearm_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 -9.80943879e-07 4 -0.000162693991 8 -0.0110932634 12 -0.310962199 16 -3.58357364 20
		 -16.9779608 24 -33.0685522 28 -26.4792266 32 -8.71677573 36 -1.17968731 40 -0.0656354406
		 44 -0.00150130995 48 -1.4117662e-05;
createNode animCurveTA -n "biped:left_hand_rotateZ";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 3.52671151 6 4.85410197 12 -3.52671151 18 -4.85410197 24 3.52671151 30 4.85410197 36
		 -3.52671151 42 -4.85410197 48 3.52671151;
createNode animCurveTA -n "biped:left_fingers_rotateZ";
	setAttr ".tan" 5;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  0 15 25 90;
createNode animCurveTA -n "biped:right_thigh_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 0.0587845554 2 -2.71983413 4 -3.94855663 6 -3.66387137 8 -3.83651512 10 -4.04391044 12
		 -2.17715752 14 1.30294289 16 4.26470754 18 5.6878752 20 5.18259035 22 3.01032019 24
		 0.0587845554 26 -2.71983413 28 -3.94855663 30 -3.66387137 32 -3.83651512 34 -4.04391044 36
		 -2.17715752 38 1.30294289 40 4.26470754 42 5.6878752 44 5.18259035 46 3.01032019 48
		 0.0587845554;
createNode animCurveTA -n "biped:right_thigh_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 18.0767305 2 11.5248501 4 10.5645822 6 29.0830962 8 47.17265 10 49.5768518 12 41.0288352
		 14 40.3002171 16 34.883123 18 28.8226257 20 23.5418157 22 19.7673267 24 18.0767305 26
		 11.5248501 28 10.5645822 30 29.0830962 32 47.17265 34 49.5768518 36 41.0288352 38
		 40.3002171 40 34.883123 42 28.8226257 44 23.5418157 46 19.7673267 48 18.0767305;
createNode animCurveTA -n "biped:right_shin_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 -62.1888982 2 -60.0540785 4 -61.3255979 6 -72.7988446 8 -69.7338837 10 -47.6165365 12
		 -29.3755933 14 -40.7539571 16 -43.4941133 18 -45.0109981 20 -48.2099683 22 -54.1398621 24
		 -62.1888982 26 -60.0540785 28 -61.3255979 30 -72.7988446 32 -69.7338837 34 -47.6165365 36
		 -29.3755933 38 -40.7539571 40 -43.4941133 42 -45.0109981 44 -48.2099683 46 -54.1398621 48
		 -62.1888982;
createNode animCurveTA -n "biped:right_foot_rotateX";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 -2.47450276 2 -2.1714468 4 -0.488392487 6 0.63810789 8 1.23050226 10 1.24383186 12
		 0.4232785 14 0.197751878 16 -1.66781244 18 -2.68624022 20 -2.586695 22 -1.99990593 24
		 -2.47450276 26 -2.1714468 28 -0.488392487 30 0.63810789 32 1.23050226 34 1.24383186 36
		 0.4232785 38 0.197751878 40 -1.66781244 42 -2.68624022 44 -2.586695 46 -1.99990593 48
		 -2.47450276;
createNode animCurveTA -n "biped:right_foot_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 5.47023912 2 4.8308902 4 3.20952772 6 0.183152678 8 -3.04613643 10 -5.73013372 12
		 -6.43863843 14 -5.20299882 16 -2.94057495 18 0.0937711301 20 3.08711675 22 5.08266304 24
		 5.47023912 26 4.8308902 28 3.20952772 30 0.183152678 32 -3.04613643 34 -5.73013372 36
		 -6.43863843 38 -5.20299882 40 -2.94057495 42 0.0937711301 44 3.08711675 46 5.08266304 48
		 5.47023912;
createNode animCurveTA -n "biped:right_foot_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 22.2848372 2 13.0172554 4 19.5621762 6 27.7016198 8 24.6640409 10 13.391977 12
		 6.20890183 14 2.43581867 16 10.6974192 18 18.1861739 20 26.5307884 22 30.8603181 24
		 22.2848372 26 13.0172554 28 19.5621762 30 27.7016198 32 24.6640409 34 13.391977 36
		 6.20890183 38 2.43581867 40 10.6974192 42 18.1861739 44 26.5307884 46 30.8603181 48
		 22.2848372;
createNode animCurveTA -n "biped:right_toes_rotateZ";
	setAttr ".tan" 2;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 23.7060185 2 37.4756837 4 33.2205 6 18.0151484 8 0 10 0 12 0 14 0 16 0 18 0 20 0 22
		 5.35494899 24 23.7060185 26 37.4756837 28 33.2205 30 18.0151484 32 0 34 0 36 0 38 0 40 0
		 42 0 44 0 46 5.35494899 48 23.7060185;
createNode animCurveTA -n "biped:right_clavicle_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  0 0 25 6 48 0;
createNode animCurveTA -n "biped:right_upper_arm_rotateZ";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 23.18222 4 16.9706155 8 -6.20049476 12 -22.71411 16 -12.2307003 20 17.0917051 24
		 27.8680144 28 25.5602971 32 2.55938239 36 -21.4063664 40 -16.8837491 44 6.21261917 48
		 23.1822218;
createNode animCurveTA -n "biped:right_upper_arm_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 4.03918068e-07 4 6.69916435e-05 8 0.00456781435 12 0.128043259 16 1.47558914 20
		 6.99092504 24 13.6164627 28 10.903211 32 3.58926059 36 0.485753599 40 0.0270263579 44
		 0.000618186449 48 5.81315494e-06;
createNode animCurveTA -n "biped:right_forearm_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 35.5911108 4 32.4854417 8 24.0137034 12 24.3841298 16 28.4267674 20 46.5277026 24
		 65.1669326 28 58.5865705 32 34.7677818 36 25.4572608 40 24.0810791 44 27.107546 48
		 35.5911225;
createNode animCurveTA -n "biped:right_forearm_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 9.80943879e-07 4 0.000162693991 8 0.0110932634 12 0.310962199 16 3.58357364 20
		 16.9779608 24 33.0685522 28 26.4792266 32 8.71677573 36 1.17968731 40 0.0656354406 44
		 0.00150130995 48 1.4117662e-05;
createNode animCurveTA -n "biped:right_hand_rotateZ";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 -3.52671151 6 4.85410197 12 3.52671151 18 -4.85410197 24 -3.52671151 30 4.85410197 36
		 3.52671151 42 -4.85410197 48 -3.52671151;
createNode animCurveTA -n "biped:right_fingers_rotateZ";
	setAttr ".tan" 5;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  0 90 25 15;
createNode animCurveTU -n "prop_parentConstraint1_w0";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 4 ".ktv[0:3]"  0 1 23 1 27 0 48 0;
	setAttr -s 4 ".kit[0:3]"  3 3 3 3;
	setAttr -s 4 ".kot[0:3]"  3 3 3 5;
createNode animCurveTU -n "prop_parentConstraint1_w1";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 4 ".ktv[0:3]"  0 0 23 0 27 1 48 1;
	setAttr -s 4 ".kit[0:3]"  3 3 3 3;
	setAttr -s 4 ".kot[0:3]"  3 3 3 5;
createNode script -n "sceneConfigurationScriptNode";
	setAttr ".b" -type "string" "playbackOptions -min 0 -max 48 -ast 0 -aet 48 ";
	setAttr ".st" 6;
select -ne :time1;
	setAttr ".o" 0;
connectAttr "biped:hips.s" "biped:spine.is";
connectAttr "biped:spine.s" "biped:belly.is";
connectAttr "biped:belly.s" "biped:chest.is";
connectAttr "biped:chest.s" "biped:neck.is";
connectAttr "biped:neck.s" "biped:head.is";
connectAttr "biped:head.s" "biped:head_end.is";
connectAttr "biped:chest.s" "biped:left_clavicle.is";
connectAttr "biped:left_clavicle.s" "biped:left_upper_arm.is";
connectAttr "biped:left_upper_arm.s" "biped:left_forearm.is";
connectAttr "biped:left_forearm.s" "biped:left_hand.is";
connectAttr "biped:left_hand.s" "biped:left_fingers.is";
connectAttr "biped:left_hand.s" "biped:left_thumb.is";
connectAttr "biped:hips.s" "biped:left_thigh.is";
connectAttr "biped:left_thigh.s" "biped:left_shin.is";
connectAttr "biped:left_shin.s" "biped:left_foot.is";
connectAttr "biped:left_foot.s" "biped:left_toes.is";
connectAttr "biped:left_toes.s" "biped:left_toes_end.is";
connectAttr "biped:chest.s" "biped:right_clavicle.is";
connectAttr "biped:right_clavicle.s" "biped:right_upper_arm.is";
connectAttr "biped:right_upper_arm.s" "biped:right_forearm.is";
connectAttr "biped:right_forearm.s" "biped:right_hand.is";
connectAttr "biped:right_hand.s" "biped:right_fingers.is";
connectAttr "biped:right_hand.s" "biped:right_thumb.is";
connectAttr "biped:hips.s" "biped:right_thigh.is";
connectAttr "biped:right_thigh.s" "biped:right_shin.is";
connectAttr "biped:right_shin.s" "biped:right_foot.is";
connectAttr "biped:right_foot.s" "biped:right_toes.is";
connectAttr "biped:right_toes.s" "biped:right_toes_end.is";
connectAttr "biped:hips_translateX.o" "biped:hips.tx";
connectAttr "biped:hips_translateY.o" "biped:hips.ty";
connectAttr "biped:hips_translateZ.o" "biped:hips.tz";
connectAttr "biped:hips_rotateX.o" "biped:hips.rx";
connectAttr "biped:hips_rotateY.o" "biped:hips.ry";
connectAttr "biped:hips_rotateZ.o" "biped:hips.rz";
connectAttr "biped:spine_rotateX.o" "biped:spine.rx";
connectAttr "biped:spine_rotateZ.o" "biped:spine.rz";
connectAttr "biped:belly_rotateY.o" "biped:belly.ry";
connectAttr "biped:chest_rotateX.o" "biped:chest.rx";
connectAttr "biped:chest_rotateZ.o" "biped:chest.rz";
connectAttr "biped:neck_rotateY.o" "biped:neck.ry";
connectAttr "biped:head_rotateX.o" "biped:head.rx";
connectAttr "biped:head_rotateY.o" "biped:head.ry";
connectAttr "biped:left_thigh_rotateY.o" "biped:left_thigh.ry";
connectAttr "biped:left_thigh_rotateZ.o" "biped:left_thigh.rz";
connectAttr "biped:left_shin_rotateZ.o" "biped:left_shin.rz";
connectAttr "biped:left_foot_rotateX.o" "biped:left_foot.rx";
connectAttr "biped:left_foot_rotateY.o" "biped:left_foot.ry";
connectAttr "biped:left_foot_rotateZ.o" "biped:left_foot.rz";
connectAttr "biped:left_toes_rotateZ.o" "biped:left_toes.rz";
connectAttr "biped:left_clavicle_rotateY.o" "biped:left_clavicle.ry";
connectAttr "biped:left_upper_arm_rotateZ.o" "biped:left_upper_arm.rz";
connectAttr "biped:left_upper_arm_rotateY.o" "biped:left_upper_arm.ry";
connectAttr "biped:left_forearm_rotateZ.o" "biped:left_forearm.rz";
connectAttr "biped:left_forearm_rotateY.o" "biped:left_forearm.ry";
connectAttr "biped:left_hand_rotateZ.o" "biped:left_hand.rz";
connectAttr "biped:left_fingers_rotateZ.o" "biped:left_fingers.rz";
connectAttr "biped:right_thigh_rotateY.o" "biped:right_thigh.ry";
connectAttr "biped:right_thigh_rotateZ.o" "biped:right_thigh.rz";
connectAttr "biped:right_shin_rotateZ.o" "biped:right_shin.rz";
connectAttr "biped:right_foot_rotateX.o" "biped:right_foot.rx";
connectAttr "biped:right_foot_rotateY.o" "biped:right_foot.ry";
connectAttr "biped:right_foot_rotateZ.o" "biped:right_foot.rz";
connectAttr "biped:right_toes_rotateZ.o" "biped:right_toes.rz";
connectAttr "biped:right_clavicle_rotateY.o" "biped:right_clavicle.ry";
connectAttr "biped:right_upper_arm_rotateZ.o" "biped:right_upper_arm.rz";
connectAttr "biped:right_upper_arm_rotateY.o" "biped:right_upper_arm.ry";
connectAttr "biped:right_forearm_rotateZ.o" "biped:right_forearm.rz";
connectAttr "biped:right_forearm_rotateY.o" "biped:right_forearm.ry";
connectAttr "biped:right_hand_rotateZ.o" "biped:right_hand.rz";
connectAttr "biped:right_fingers_rotateZ.o" "biped:right_fingers.rz";
connectAttr "prop_parentConstraint1_w0.o" "prop_parentConstraint1.w0";
connectAttr "prop_parentConstraint1_w1.o" "prop_parentConstraint1.w1";
connectAttr "prop_parentConstraint1.ctx" "prop.tx";
connectAttr "prop_parentConstraint1.cty" "prop.ty";
connectAttr "prop_parentConstraint1.ctz" "prop.tz";
connectAttr "prop_parentConstraint1.crx" "prop.rx";
connectAttr "prop_parentConstraint1.cry" "prop.ry";
connectAttr "prop_parentConstraint1.crz" "prop.rz";
connectAttr "prop.ro" "prop_parentConstraint1.cro";
connectAttr "prop.pim" "prop_parentConstraint1.cpim";
connectAttr "prop.rp" "prop_parentConstraint1.crp";
connectAttr "prop.rpt" "prop_parentConstraint1.crt";
connectAttr "biped:right_hand.t" "prop_parentConstraint1.tg[0].tt";
connectAttr "biped:right_hand.rp" "prop_parentConstraint1.tg[0].trp";
connectAttr "biped:right_hand.rpt" "prop_parentConstraint1.tg[0].trt";
connectAttr "biped:right_hand.r" "prop_parentConstraint1.tg[0].tr";
connectAttr "biped:right_hand.ro" "prop_parentConstraint1.tg[0].tro";
connectAttr "biped:right_hand.s" "prop_parentConstraint1.tg[0].ts";
connectAttr "biped:right_hand.pm" "prop_parentConstraint1.tg[0].tpm";
connectAttr "biped:right_hand.jo" "prop_parentConstraint1.tg[0].tjo";
connectAttr "biped:right_hand.ssc" "prop_parentConstraint1.tg[0].tsc";
connectAttr "biped:right_hand.is" "prop_parentConstraint1.tg[0].tis";
connectAttr "prop_parentConstraint1.w0" "prop_parentConstraint1.tg[0].tw";
connectAttr "biped:left_hand.t" "prop_parentConstraint1.tg[1].tt";
connectAttr "biped:left_hand.rp" "prop_parentConstraint1.tg[1].trp";
connectAttr "biped:left_hand.rpt" "prop_parentConstraint1.tg[1].trt";
connectAttr "biped:left_hand.r" "prop_parentConstraint1.tg[1].tr";
connectAttr "biped:left_hand.ro" "prop_parentConstraint1.tg[1].tro";
connectAttr "biped:left_hand.s" "prop_parentConstraint1.tg[1].ts";
connectAttr "biped:left_hand.pm" "prop_parentConstraint1.tg[1].tpm";
connectAttr "biped:left_hand.jo" "prop_parentConstraint1.tg[1].tjo";
connectAttr "biped:left_hand.ssc" "prop_parentConstraint1.tg[1].tsc";
connectAttr "biped:left_hand.is" "prop_parentConstraint1.tg[1].tis";
connectAttr "prop_parentConstraint1.w1" "prop_parentConstraint1.tg[1].tw";
// End of walking_biped.ma
