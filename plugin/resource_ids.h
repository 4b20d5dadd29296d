// Numbers shared by the resource script and the code; so macros, which both understand.
#pragma once

#define IDD_PANEL 101

#define IDC_BANNER 1001
#define IDC_VERSION 1002
#define IDC_TOKEN 1003
#define IDC_SAVE 1004
#define IDC_BALANCE 1005
#define IDC_REFRESH 1006
#define IDC_FOLDER 1007
#define IDC_BROWSE 1008
#define IDC_DISPLACEMENT 1009
#define IDC_BAKE 1010
#define IDC_EXPORT 1011
#define IDC_PROGRESS 1012
#define IDC_STATUS 1013
#define IDC_JOB 1014
#define IDC_LINK 1015
#define IDC_PATH_LABEL 1016
#define IDC_PATH_A 1017
#define IDC_PATH_B 1018

#define IDB_BANNER 2001
#define IDB_BANNER_LARGE 2002
