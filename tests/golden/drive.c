#include "vantrel.h"
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      speed1 = 80;
      speed2 = 80;
      speed3 = 80;
      speed4 = 80;
      set_motor(1, speed1);set_motor(2, -speed2);wait(1.5);
      set_motor(1, -speed1);set_motor(2, -speed2);wait(0.25);
      set_motor(1,0);set_motor(2,0);set_motor(3,0);set_motor(4,0);
}
