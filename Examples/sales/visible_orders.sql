-- What a user may see depends on the role. The filter of a role is a macro itself and names further parameters.
select o."Order #", c.name as customer, r.name as region
from sales_order o
join customer c on c.customer_id = o.customer_id
join region r on r.region_id = c.region_id
where #$filter{$role}#
order by o.order_id;
