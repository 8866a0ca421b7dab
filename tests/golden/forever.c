#include "vantrel.h"
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      speed1 = 30;
      speed2 = 30;
      speed3 = 30;
      speed4 = 30;
      while(1)
      {
            set_motor(1, -speed1);
            set_motor(2, -speed2);
            wait(1);
            set_motor(1, 0);
            set_motor(2, 0);
      }
}
