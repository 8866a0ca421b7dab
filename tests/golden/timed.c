#include "vantrel.h"
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      set_motor(1, speed1);
      set_motor(2, -speed2);
      wait(0.5);
      set_motor(1, 0);
      set_motor(2, 0);
      set_motor(1, -speed1);
      set_motor(2, speed2);
      wait(2);
      set_motor(1, 0);
      set_motor(2, 0);
      set_motor(1, -speed1);
      set_motor(2, -speed2);
      wait(0.25);
      set_motor(1, 0);
      set_motor(2, 0);
      set_motor(1, speed1);
      set_motor(2, speed2);
      wait(12.75);
      set_motor(1, 0);
      set_motor(2, 0);
}
