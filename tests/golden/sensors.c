#include "vantrel.h"
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      while(switch_state(5) == 0)
      {
            wait(0.1);
      }
      while(TZ_AI(4) > 500)
      {
            wait(0.1);
      }
      while(switch_state(2) != 0)
      {
            set_motor(1, speed1);set_motor(2, -speed2);wait(0.5);
      }
      while(TZ_AI(1) < 500)
      {
            set_motor(1,0);set_motor(2,0);set_motor(3,0);set_motor(4,0);
      }
      set_motor(3, 0);
}
