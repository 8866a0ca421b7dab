#include "vantrel.h"
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      servo_ctrl(1, 716, 512, 0);
      servo_ctrl(18, 716, 68, 0);
      servo_ctrl(2, 716, 956, 0);
      wait(0.75);
      servo_ctrl(3, 716, 379, 0);
      servo_ctrl(4, 716, 514, 0);
}
