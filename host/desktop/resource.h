// The numbers of the window's commands and icons, for the resource script and for C++.
#pragma once

#define IDI_DESK 1
#define IDI_OBJECT_ALIGN 2
#define IDI_POSITION_ALIGN 3
#define IDM_DESK 10
#define IDA_DESK 11

#define ID_OPEN 100
#define ID_SAVE 101
#define ID_SAVE_AS 102
#define ID_EXIT 103
#define ID_UNDO 110
#define ID_REDO 111
#define ID_ERASE 112
#define ID_GROUP 113
#define ID_ZOOM_EXTENTS 120
#define ID_ZOOM_WINDOW 121
#define ID_DARK 122
#define ID_LIGHT 123
#define ID_SNAPS 124
#define ID_OBJECT_ALIGN 130
#define ID_POSITION_ALIGN 131
#define ID_ABOUT 140
