#include "vantrel.h"
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      speed1 = -abs(speed1);set_motor(1, speed1);speed2 = abs(speed2);set_motor(2, speed2);speed4 = -abs(speed4);
      set_motor(4, speed4);
      wait(0.5);
      set_motor(4, 0);
      speed1 = abs(speed1);
      set_motor(1, speed1);
      wait(1.25);
      set_motor(1, 0);
      set_motor(4, 0);
      set_motor(1, -speed1);
      set_motor(2, speed2);
}
