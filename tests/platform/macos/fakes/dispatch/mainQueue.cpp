// Where the main queue's handle points to. Only its address counts; Dispatch's own header would have its
// type.

extern "C" {
extern char _dispatch_main_q[];
char _dispatch_main_q[64];
}
